# A request from the workspace's envelope through the application server to the reply dispatcher.
add_executable(round_trip_bench round_trip_bench.cpp)
target_include_directories(round_trip_bench PRIVATE ${PROJECT_SOURCE_DIR})
target_compile_definitions(round_trip_bench PRIVATE ZEMLO_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
target_link_libraries(round_trip_bench PRIVATE
  zemlo_compile_options zemlo_fakes zemlo_server zemlo_workspace_messaging Qt6::Core benchmark::benchmark)
