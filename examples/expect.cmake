# Runs `program`, by `emulator` where it is for another machine, and compares what it prints with the file `expected`.
execute_process( COMMAND ${emulator} ${program} OUTPUT_VARIABLE output RESULT_VARIABLE result )
if( NOT result EQUAL 0 )
    message( FATAL_ERROR "${program} ended with ${result}" )
endif()
string( REPLACE "\r\n" "\n" output "${output}" ) # as streams of text end their lines on Windows
file( READ ${expected} text )
if( NOT output STREQUAL text )
    message( FATAL_ERROR "${program} printed\n${output}\nnot\n${text}" )
endif()
