# What a further letter of a template costs.
add_executable(merge_bench merge_bench.cpp merge_template.cpp)
target_include_directories(merge_bench PRIVATE ${PROJECT_SOURCE_DIR})
target_link_libraries(merge_bench PRIVATE
  zemlo_compile_options zemlo_wordprocessor pugixml::pugixml PkgConfig::LIBZIP ZLIB::ZLIB benchmark::benchmark)
