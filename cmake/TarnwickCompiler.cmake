# One place for what every target of the project is compiled with.
set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTOUIC ON)
set(CMAKE_AUTORCC ON)

add_compile_options(-Wall -Wextra -Wpedantic -Wnon-virtual-dtor -Woverloaded-virtual)
add_compile_definitions(QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_NO_NARROWING_CONVERSIONS_IN_CONNECT)
if(TARNWICK_WERROR)
    add_compile_options(-Werror)
endif()

# What is shipped is what is tested: hardened, and the same bytes wherever it was built. Not
# with _FORTIFY_SOURCE: its checked calls pass by the tests' own open(), read() and write().
# Resources of the first format have no dates of files in them.
if(NOT APPLE)
    include(CheckPIESupported)
    check_pie_supported(LANGUAGES CXX)
    add_compile_options("-ffile-prefix-map=${CMAKE_SOURCE_DIR}=." $<$<CONFIG:Release>:-fstack-protector-strong>)
    add_link_options($<$<CONFIG:Release>:LINKER:-z,relro,-z,now>)
    set(CMAKE_AUTORCC_OPTIONS --format-version 1)
endif()

if(TARNWICK_SANITIZE)
    add_compile_options(-fsanitize=${TARNWICK_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=undefined -g)
    add_link_options(-fsanitize=${TARNWICK_SANITIZE})
endif()
