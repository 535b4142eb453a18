# Runs `program`, by `emulator` where it is for another machine, and compares what it prints with the file `expected`.
execute_process( COMMAND ${emulator} ${program} OUTPUT_VARIABLE output RESULT_VARIABLE result )
if( NOT result EQUAL 0 )
    message( FATAL_ERROR "${program} ended with ${result}" )
endif()
file( READ ${expected} text )
if( NOT output STREQUAL text )
    message( FATAL_ERROR "${program} printed\n${output}\nnot\n${text}" )
endif()
