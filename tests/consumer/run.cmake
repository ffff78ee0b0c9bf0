# Installs the built project to a scratch prefix, builds the consumer against it and runs it.
# Expects BUILD (the project's build folder), SOURCE (this folder), SCRATCH and FLAGS (for the compiler).
file(REMOVE_RECURSE ${SCRATCH})
function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${ARGN}\n${output}")
  endif()
endfunction()
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${SCRATCH}/prefix)
run(${CMAKE_COMMAND} -S ${SOURCE} -B ${SCRATCH}/build -G Ninja -DCMAKE_PREFIX_PATH=${SCRATCH}/prefix
  -DCMAKE_CXX_FLAGS=${FLAGS})
run(${CMAKE_COMMAND} --build ${SCRATCH}/build)
run(${SCRATCH}/build/consumer)
