#include <gmock/gmock.h>

#include <QApplication>

// Windows without a screen, unless the caller names a platform.
int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", qEnvironmentVariableIsSet("QT_QPA_PLATFORM") ? qgetenv("QT_QPA_PLATFORM")
                                                                          : QByteArray("offscreen"));
  QApplication application(argc, argv);
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
