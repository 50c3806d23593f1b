# What verifying an address by the street file costs, and what the file takes.
add_executable(address_bench address_bench.cpp ${PROJECT_SOURCE_DIR}/tests/postal/spoiled_addresses.cpp)
target_include_directories(address_bench PRIVATE ${PROJECT_SOURCE_DIR})
target_compile_definitions(address_bench PRIVATE ZEMLO_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
target_link_libraries(address_bench PRIVATE zemlo_compile_options zemlo_postal zemlo_server benchmark::benchmark)
