# cmake -DPROGRAM=<solvane> -DTO=<folder> -P Describe.cmake: has the program write its manual page and its completions.
set (places
    man share/man/man1/solvane.1
    bash share/bash-completion/completions/solvane
    zsh share/zsh/site-functions/_solvane)

while (places)
    list (POP_FRONT places form place)
    execute_process (
        COMMAND "${PROGRAM}" describe "${form}"
        OUTPUT_VARIABLE text
        RESULT_VARIABLE result)

    if (NOT result EQUAL 0)
        message (FATAL_ERROR "'${PROGRAM} describe ${form}' failed: ${result}")
    endif()

    file (WRITE "${TO}/${place}.new" "${text}")
    file (RENAME "${TO}/${place}.new" "${TO}/${place}")
endwhile()
