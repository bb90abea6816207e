# What the copy costs beside "cp -a" of the same folders on the same disk.
add_executable(bench_copy bench_copy.cpp)
target_link_libraries(bench_copy PRIVATE tarnwick_copy tarnwick_tree)
