# cmake -DFROM=<file or bundle> -DTO=<place> -P Place.cmake: brings a copy up to date. A file that differs is copied
# beside its place and then renamed, so that a host that has the old one open keeps it whole.

function (place from to)
    execute_process (
        COMMAND "${CMAKE_COMMAND}" -E compare_files "${from}" "${to}"
        RESULT_VARIABLE differs OUTPUT_QUIET ERROR_QUIET)

    if (differs)
        get_filename_component (name "${from}" NAME)
        file (COPY "${from}" DESTINATION "${to}.new")
        file (RENAME "${to}.new/${name}" "${to}")
        file (REMOVE_RECURSE "${to}.new")
    endif()
endfunction()

if (NOT IS_DIRECTORY "${FROM}")
    place ("${FROM}" "${TO}")
    return()
endif()

file (GLOB_RECURSE files RELATIVE "${FROM}" "${FROM}/*")

foreach (file IN LISTS files)
    place ("${FROM}/${file}" "${TO}/${file}")
endforeach()
