#include <gmock/gmock.h>

#include <QCoreApplication>

// Qt's database drivers are plug-ins, which an application object has to find.
int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
