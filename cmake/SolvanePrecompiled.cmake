# solvane_precompile (target HEADER...): headers that nearly every file of a target reads, compiled once for it.
# solvane_precompile (target FROM other): the same, with what was compiled for another target.
#
# The framework's headers take most of the time of a file that includes them. No file may depend on it: each includes
# what it uses, which a build with SOLVANE_PRECOMPILE=OFF proves (the preset debug is one).

option (SOLVANE_PRECOMPILE "Compile the framework's headers once for each target" ON)

function (solvane_precompile target)
    if (NOT SOLVANE_PRECOMPILE)
        return()
    endif()

    cmake_parse_arguments (PARSE_ARGV 1 solvane "" "FROM" "")

    if (solvane_FROM)
        target_precompile_headers (${target} REUSE_FROM ${solvane_FROM})
    else()
        target_precompile_headers (${target} PRIVATE ${solvane_UNPARSED_ARGUMENTS})
    endif()

    # So that the compiler cache can follow the header.
    if (CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        target_compile_options (${target} PRIVATE -fpch-preprocess)
    endif()
endfunction()
