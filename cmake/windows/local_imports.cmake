# Code that is compiled to import from a DLL reads the places __imp_NAME, which no linker makes for what lies in the program
# itself. Writes a source that has one for every name that the DLL exports, for programs that link its object files.
#   cmake -D OBJDUMP=… -D DLL=… -D OUTPUT=… -P local_imports.cmake
execute_process(COMMAND ${OBJDUMP} -p ${DLL} OUTPUT_VARIABLE table COMMAND_ERROR_IS_FATAL ANY)
string(REGEX REPLACE ".*Ordinal/Name Pointer. Table" "" table "${table}")
string(REGEX MATCHALL "\n\t\\[ *[0-9]+\\] [A-Za-z_0-9.]+" table "${table}")
list(TRANSFORM table REPLACE "^\n\t\\[ *[0-9]+\\] (.*)$" "    \".globl __imp_\\1\\\\n__imp_\\1: .quad \\1\\\\n\"\n")
list(JOIN table "" table)
file(WRITE ${OUTPUT} "asm(\".section .rdata\\n.balign 8\\n\"\n${table});\n")
