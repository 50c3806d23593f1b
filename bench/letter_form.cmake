# The form in which a letter is completed, on a template in memory and without layout.
add_executable(letter_form_bench letter_form_bench.cpp merge_template.cpp)
target_include_directories(letter_form_bench PRIVATE ${PROJECT_SOURCE_DIR})
target_link_libraries(letter_form_bench PRIVATE
  zemlo_compile_options zemlo_fakes zemlo_composition zemlo_wordprocessor PkgConfig::LIBZIP benchmark::benchmark)
