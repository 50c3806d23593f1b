# The list of results: opening it, scrolling through it, sorting and searching it.
find_package(Qt6 REQUIRED COMPONENTS Widgets)
add_executable(grid_bench grid_bench.cpp)
target_include_directories(grid_bench PRIVATE ${PROJECT_SOURCE_DIR})
target_compile_definitions(grid_bench PRIVATE ZEMLO_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
target_link_libraries(grid_bench PRIVATE
  zemlo_compile_options zemlo_fakes zemlo_desktop zemlo_tracking zemlo_reference Qt6::Widgets benchmark::benchmark)
