# solvane_strip (target NAME): takes the symbols out of what a release build links, and keeps them in NAME.debug, which a
# debugger that finds it beside the product reads by itself. Other builds keep theirs.

set (SOLVANE_SYMBOLS "${CMAKE_BINARY_DIR}/symbols")
file (MAKE_DIRECTORY "${SOLVANE_SYMBOLS}")

function (solvane_strip target name)
    if (NOT CMAKE_BUILD_TYPE STREQUAL "Release" OR NOT CMAKE_OBJCOPY OR NOT CMAKE_STRIP)
        return()
    endif()

    set (symbols "${SOLVANE_SYMBOLS}/${name}.debug")

    add_custom_command (TARGET ${target} POST_BUILD
        COMMAND "${CMAKE_OBJCOPY}" --only-keep-debug "$<TARGET_FILE:${target}>" "${symbols}"
        COMMAND "${CMAKE_STRIP}" --strip-all "$<TARGET_FILE:${target}>"
        COMMAND "${CMAKE_OBJCOPY}" "--add-gnu-debuglink=${symbols}" "$<TARGET_FILE:${target}>"
        VERBATIM)
endfunction()
