# Compiles through ccache where it is installed; nothing depends on it.
find_program (SOLVANE_CCACHE ccache)

if (SOLVANE_CCACHE)
    set (CMAKE_C_COMPILER_LAUNCHER "${SOLVANE_CCACHE}")
    set (CMAKE_CXX_COMPILER_LAUNCHER "${SOLVANE_CCACHE}")
endif()
