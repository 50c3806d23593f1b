# Searching a letter history of growing size, and recording a letter meanwhile.
add_executable(history_bench history_bench.cpp)
target_include_directories(history_bench PRIVATE ${PROJECT_SOURCE_DIR})
target_compile_definitions(history_bench PRIVATE ZEMLO_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
target_link_libraries(history_bench PRIVATE
  zemlo_compile_options zemlo_server Qt6::Core benchmark::benchmark)
