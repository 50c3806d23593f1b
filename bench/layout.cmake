# Letters to PDF: the layout pool, and the office alone beside it.
add_executable(layout_bench layout_bench.cpp merge_template.cpp)
target_include_directories(layout_bench PRIVATE ${PROJECT_SOURCE_DIR})
target_link_libraries(layout_bench PRIVATE
  zemlo_compile_options zemlo_wordprocessor PkgConfig::LIBZIP benchmark::benchmark)
add_dependencies(layout_bench zemlo-office-worker layout_yardstick)

add_executable(layout_yardstick layout_yardstick.cpp ${PROJECT_SOURCE_DIR}/src/wordprocessor/office/profile.cpp)
target_include_directories(layout_yardstick PRIVATE ${PROJECT_SOURCE_DIR}/src)
target_include_directories(layout_yardstick SYSTEM PRIVATE ${LIBREOFFICEKIT_INCLUDE})
target_compile_definitions(layout_yardstick PRIVATE LOK_USE_UNSTABLE_API)
target_link_libraries(layout_yardstick PRIVATE zemlo_compile_options ${CMAKE_DL_LIBS})
