# tarnwick_library(<folder> SOURCES <files...> [LINKS <targets...>])
#
# Makes the static library tarnwick_<folder> of one folder of src/. Its headers
# are reached as "<folder>/<Class>.h" through an include root that holds this
# folder alone, so that a library sees only the folders that it links: including
# anything else fails to build.
function(tarnwick_library folder)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    set(include_root "${CMAKE_BINARY_DIR}/include/${folder}")
    file(MAKE_DIRECTORY "${include_root}")
    file(CREATE_LINK "${CMAKE_CURRENT_SOURCE_DIR}" "${include_root}/${folder}" SYMBOLIC)

    add_library(tarnwick_${folder} STATIC ${ARG_SOURCES})
    target_include_directories(tarnwick_${folder} PUBLIC "${include_root}")
    target_link_libraries(tarnwick_${folder} PUBLIC ${ARG_LINKS})
endfunction()
