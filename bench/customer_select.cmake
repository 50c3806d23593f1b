# Choosing a customer in the window, in a register of growing size.
find_package(Qt6 REQUIRED COMPONENTS Widgets)
add_executable(customer_select_bench customer_select_bench.cpp many_customers.cpp)
target_include_directories(customer_select_bench PRIVATE ${PROJECT_SOURCE_DIR})
target_compile_definitions(customer_select_bench PRIVATE ZEMLO_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
target_link_libraries(customer_select_bench PRIVATE
  zemlo_compile_options zemlo_fakes zemlo_desktop zemlo_server Qt6::Widgets benchmark::benchmark)
