# What the tree costs beside "du -s" of the same folders. The memory is asked
# from the C library of Linux.
if(NOT APPLE)
    add_executable(bench_tree bench_tree.cpp)
    target_link_libraries(bench_tree PRIVATE tarnwick_copy tarnwick_tree)
endif()
