# Makes the installed bundle whole and signs it, or ends with the reason:
#
#   TARNWICK_APP           the bundle
#   TARNWICK_IDENTITY      who signs; "-" or nothing for an ad-hoc signature
#   TARNWICK_MACDEPLOYQT, TARNWICK_CODESIGN, TARNWICK_OTOOL    the tools
#
# No entitlements: the hardened runtime asks for one where a program makes code while it
# runs, loads libraries that others have signed, or uses devices; this one does not.
cmake_policy(VERSION 3.22)
include("${CMAKE_CURRENT_LIST_DIR}/../../cmake/TarnwickMachO.cmake")

# What cannot run ends the installation, and so does an error that is only printed.
function(tarnwick_run_tool)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result
        OUTPUT_VARIABLE output ERROR_VARIABLE error ECHO_OUTPUT_VARIABLE ECHO_ERROR_VARIABLE)
    if(NOT result EQUAL 0)
        list(JOIN ARGN " " command)
        message(FATAL_ERROR "${command} failed: ${result}")
    endif()
    if("${output}\n${error}" MATCHES "(^|\n)ERROR:[^\n]*")
        list(GET ARGN 0 tool)
        message(FATAL_ERROR "${tool} tells of an error and does not fail: ${CMAKE_MATCH_0}")
    endif()
endfunction()

# What a program that ran in the build folder has left, which no signature can cover.
function(tarnwick_remove_log)
    set(log "${TARNWICK_APP}/Contents/MacOS/Log")
    if(EXISTS "${log}")
        message(STATUS "Removing ${log}")
        file(REMOVE_RECURSE "${log}")
    endif()
endfunction()

function(tarnwick_take_qt_in)
    if(NOT TARNWICK_MACDEPLOYQT)
        message(WARNING "Without macdeployqt: the bundle needs Qt on the Mac that runs it")
        return()
    endif()
    set(options -always-overwrite)
    if(NOT TARNWICK_IDENTITY STREQUAL "-")
        list(APPEND options "-sign-for-notarization=${TARNWICK_IDENTITY}")
    endif()
    tarnwick_run_tool("${TARNWICK_MACDEPLOYQT}" "${TARNWICK_APP}" ${options})
endfunction()

# Libraries and plugins first, then the frameworks that may hold some of them.
function(tarnwick_list_code variable)
    set(contents "${TARNWICK_APP}/Contents")
    file(GLOB_RECURSE found "${contents}/PlugIns/*.dylib" "${contents}/Frameworks/*.dylib")
    set(code)
    foreach(file IN LISTS found)
        if(NOT IS_SYMLINK "${file}")
            list(APPEND code "${file}")
        endif()
    endforeach()
    file(GLOB frameworks "${contents}/Frameworks/*.framework")
    set(${variable} ${code} ${frameworks} PARENT_SCOPE)
endfunction()

# tarnwick_check_binary(<file>): it loads nothing from where it was built, and runs on
# each system that the bundle promises.
function(tarnwick_check_binary file)
    tarnwick_macho_text(text "${TARNWICK_OTOOL}" "${file}")
    if(NOT text)
        message(FATAL_ERROR "otool cannot read ${file}")
    endif()
    tarnwick_macho_loads(loads "${text}")
    foreach(path IN LISTS loads)
        if(NOT path MATCHES "^(@|/System/|/usr/lib/)")
            message(FATAL_ERROR "${file} loads ${path}, which other Macs do not have")
        endif()
    endforeach()
    tarnwick_macho_system(system "${text}")
    if(system VERSION_GREATER promised)
        message(FATAL_ERROR "${file} needs macOS ${system}, but the bundle promises ${promised}. "
            "Build with -DCMAKE_OSX_DEPLOYMENT_TARGET=${system}")
    endif()
endfunction()

function(tarnwick_check_code)
    if(NOT TARNWICK_OTOOL)
        message(FATAL_ERROR "otool was not found; it comes with: xcode-select --install")
    endif()
    file(READ "${TARNWICK_APP}/Contents/Info.plist" plist)
    if(NOT plist MATCHES "LSMinimumSystemVersion</key>[ \n\t]*<string>([0-9.]+)<")
        message(FATAL_ERROR "Info.plist names no earliest system")
    endif()
    set(promised "${CMAKE_MATCH_1}")
    tarnwick_check_binary("${TARNWICK_APP}/Contents/MacOS/TarnwickMacPE")
    foreach(code IN LISTS ARGN)
        if(code MATCHES "/([^/]+)\\.framework$")
            string(APPEND code "/${CMAKE_MATCH_1}")
        endif()
        tarnwick_check_binary("${code}")
    endforeach()
endfunction()

function(tarnwick_sign)
    if(NOT TARNWICK_CODESIGN)
        message(FATAL_ERROR "codesign was not found. Without a signature no Mac with Apple silicon starts "
            "the program; codesign comes with: xcode-select --install")
    endif()
    set(options --force --sign "${TARNWICK_IDENTITY}")
    if(NOT TARNWICK_IDENTITY STREQUAL "-")
        list(APPEND options --options runtime --timestamp)
    endif()
    foreach(code IN LISTS ARGN)
        tarnwick_run_tool("${TARNWICK_CODESIGN}" ${options} "${code}")
    endforeach()
    tarnwick_run_tool("${TARNWICK_CODESIGN}" ${options} "${TARNWICK_APP}")
    tarnwick_run_tool("${TARNWICK_CODESIGN}" --verify --deep --strict --verbose=2 "${TARNWICK_APP}")
endfunction()

if(NOT TARNWICK_IDENTITY)
    set(TARNWICK_IDENTITY "-")
endif()
tarnwick_remove_log()
tarnwick_take_qt_in()
tarnwick_list_code(code)
if(TARNWICK_MACDEPLOYQT)
    tarnwick_check_code(${code})
endif()
tarnwick_sign(${code})
