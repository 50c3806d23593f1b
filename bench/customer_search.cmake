# Finding customers in a register of growing size, and saving one meanwhile.
add_executable(customer_search_bench customer_search_bench.cpp many_customers.cpp)
target_include_directories(customer_search_bench PRIVATE ${PROJECT_SOURCE_DIR})
target_compile_definitions(customer_search_bench PRIVATE ZEMLO_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
target_link_libraries(customer_search_bench PRIVATE
  zemlo_compile_options zemlo_fakes zemlo_server Qt6::Core benchmark::benchmark)
add_dependencies(customer_search_bench zemlo-letters)
