# What otool tells of a program or library of macOS: at configuring of Qt's, and at
# installing of everything that has come into the bundle.

# tarnwick_macho_text(<variable> <otool> <file>): the load commands of all its
# architectures, or nothing where they cannot be read.
function(tarnwick_macho_text variable otool file)
    set(${variable} "" PARENT_SCOPE)
    if(NOT otool)
        return()
    endif()
    execute_process(COMMAND "${otool}" -arch all -l "${file}"
        RESULT_VARIABLE result OUTPUT_VARIABLE text ERROR_QUIET)
    if(result EQUAL 0)
        set(${variable} "${text}" PARENT_SCOPE)
    endif()
endfunction()

# tarnwick_macho_system(<variable> <text>): the earliest macOS of the architecture that
# has the earliest one, as each Mac runs the newest system of one alone; or nothing.
function(tarnwick_macho_system variable text)
    string(REGEX MATCHALL
        "LC_BUILD_VERSION[ \n]+cmdsize [0-9]+[ \n]+platform [^\n]+\n +minos [0-9.]+|LC_VERSION_MIN_MACOSX[ \n]+cmdsize [0-9]+[ \n]+version [0-9.]+"
        commands "${text}")
    set(earliest "")
    foreach(command IN LISTS commands)
        string(REGEX MATCH "[0-9.]+$" system "${command}")
        if(earliest STREQUAL "" OR system VERSION_LESS earliest)
            set(earliest "${system}")
        endif()
    endforeach()
    set(${variable} "${earliest}" PARENT_SCOPE)
endfunction()

# tarnwick_macho_loads(<variable> <text>): the paths of the libraries that it loads. Its
# own name is none of them.
function(tarnwick_macho_loads variable text)
    string(REGEX MATCHALL
        "LC_(LOAD_DYLIB|LOAD_WEAK_DYLIB|REEXPORT_DYLIB|LOAD_UPWARD_DYLIB|LAZY_LOAD_DYLIB)[ \n]+cmdsize [0-9]+[ \n]+name [^\n]+"
        commands "${text}")
    set(paths)
    foreach(command IN LISTS commands)
        string(REGEX REPLACE "^.*\n +name (.*) \\(offset [0-9]+\\)$" "\\1" path "${command}")
        list(APPEND paths "${path}")
    endforeach()
    set(${variable} "${paths}" PARENT_SCOPE)
endfunction()
