# solvane_flags: language level and sanitizers of every target, the framework's included.
# solvane_options: the same and the include root, for targets of ours.
# solvane_own_sources (target): strict warnings for files that we write, never for a library's.

set (CMAKE_POSITION_INDEPENDENT_CODE ON)

# A plug-in shares its process with strangers, so it offers its entry points and nothing else.
set (CMAKE_C_VISIBILITY_PRESET hidden)
set (CMAKE_CXX_VISIBILITY_PRESET hidden)
set (CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set (CMAKE_CXX_EXTENSIONS OFF)

add_library (solvane_flags INTERFACE)
target_compile_features (solvane_flags INTERFACE cxx_std_20)

add_library (solvane_options INTERFACE)
target_link_libraries (solvane_options INTERFACE solvane_flags)
target_include_directories (solvane_options INTERFACE "${PROJECT_SOURCE_DIR}/source")

if (SOLVANE_SANITIZE STREQUAL "address")
    target_compile_options (solvane_flags INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    target_link_options (solvane_flags INTERFACE -fsanitize=address,undefined)
elseif (SOLVANE_SANITIZE STREQUAL "thread")
    target_compile_options (solvane_flags INTERFACE -fsanitize=thread -fno-omit-frame-pointer)
    target_link_options (solvane_flags INTERFACE -fsanitize=thread)
    # Functions with versions chosen at load time run before the thread sanitizer is ready and crash it.
    target_compile_definitions (solvane_flags INTERFACE SOLVANE_NO_FUNCTION_VERSIONS=1)
elseif (SOLVANE_SANITIZE STREQUAL "fuzzer")
    # The fuzzer's own main is linked to the fuzz targets alone.
    target_compile_options (solvane_flags INTERFACE -fsanitize=fuzzer-no-link,address -fno-omit-frame-pointer)
    target_link_options (solvane_flags INTERFACE -fsanitize=address)
    target_compile_definitions (solvane_flags INTERFACE SOLVANE_NO_FUNCTION_VERSIONS=1)
elseif (NOT SOLVANE_SANITIZE STREQUAL "")
    message (FATAL_ERROR "SOLVANE_SANITIZE is '${SOLVANE_SANITIZE}'; it knows address, thread and fuzzer")
endif()

function (solvane_own_sources target)
    if (MSVC)
        target_compile_options (${target} PRIVATE /W4)
    else()
        target_compile_options (${target} PRIVATE
            -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
            -Woverloaded-virtual -Wold-style-cast)
    endif()

    if (SOLVANE_WARNINGS_AS_ERRORS)
        target_compile_options (${target} PRIVATE $<IF:$<CXX_COMPILER_ID:MSVC>,/WX,-Werror>)
    endif()
endfunction()
