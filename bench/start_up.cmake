# The window: from the start of the process to the first picture, and opening a long list.
add_executable(start_up_bench start_up_bench.cpp)
target_include_directories(start_up_bench PRIVATE ${PROJECT_SOURCE_DIR})
target_compile_definitions(start_up_bench PRIVATE ZEMLO_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
target_link_libraries(start_up_bench PRIVATE
  zemlo_compile_options zemlo_fakes zemlo_apps_corresp zemlo_reference Qt6::Widgets benchmark::benchmark)
add_dependencies(start_up_bench zemlo-letters zemlo-office-worker)
