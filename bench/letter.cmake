# One letter from its request to its PDF.
add_executable(letter_bench letter_bench.cpp)
target_include_directories(letter_bench PRIVATE ${PROJECT_SOURCE_DIR})
target_compile_definitions(letter_bench PRIVATE ZEMLO_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
target_link_libraries(letter_bench PRIVATE
  zemlo_compile_options zemlo_fakes zemlo_server zemlo_wordprocessor zemlo_host zemlo_composition
  zemlo_workspace_messaging Qt6::Core benchmark::benchmark)
add_dependencies(letter_bench zemlo-office-worker)
