# Installs the built project to an empty prefix, checks that nothing there leads back to the build, builds the consumer
# against the package, and runs it and the programs from there.
# Expects BUILD (the project's build folder), SOURCE (this folder), SCRATCH and FLAGS (for the compiler); for another system
# also EMULATOR (which runs its programs), SUFFIX (of their names) and OPTIONS (that find its compiler and Qt).
file(REMOVE_RECURSE ${SCRATCH})
set(prefix ${SCRATCH}/prefix)
unset(ENV{LD_LIBRARY_PATH})
set(ENV{WINEPATH} "${prefix}/bin;${BUILD}/bin") # Qt's DLLs are in the second one

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${ARGN}\n${output}${errors}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${prefix})

# The programs find their libraries below the prefix, and no text that is installed names the build.
file(GLOB_RECURSE texts ${prefix}/*.cmake ${prefix}/*.h ${prefix}/*.desktop ${prefix}/*.xml)
foreach(text ${texts})
  file(READ ${text} content)
  string(FIND "${content}" "${BUILD}" place)
  if(NOT place EQUAL -1)
    message(FATAL_ERROR "${text} names the build folder")
  endif()
endforeach()
file(GLOB binaries ${prefix}/bin/* ${prefix}/lib*/libxy*.so ${prefix}/lib*/*/libxy*.so)
foreach(binary ${binaries})
  file(STRINGS ${binary} names REGEX "${BUILD}/lib")
  if(names)
    message(FATAL_ERROR "${binary} looks for libraries in the build folder")
  endif()
endforeach()

file(GLOB_RECURSE package ${prefix}/lumoplotConfig.cmake)
get_filename_component(package ${package} DIRECTORY)
run(${CMAKE_COMMAND} -S ${SOURCE} -B ${SCRATCH}/build -G Ninja -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_CXX_FLAGS=${FLAGS}
  -Dlumoplot_DIR=${package} ${OPTIONS})
run(${CMAKE_COMMAND} --build ${SCRATCH}/build)
run(${EMULATOR} ${SCRATCH}/build/consumer${SUFFIX} -platform offscreen)
run(${EMULATOR} ${prefix}/bin/xydata${SUFFIX} eval 1+1)
if(NOT output STREQUAL "2\n")
  message(FATAL_ERROR "xydata eval 1+1 gives ${output}")
endif()
run(${EMULATOR} ${prefix}/bin/lumoplot-host${SUFFIX} --shot ${SCRATCH}/pictures)
file(GLOB pictures ${SCRATCH}/pictures/*.png)
list(LENGTH pictures count)
if(count LESS 2)
  message(FATAL_ERROR "the host saves ${count} pictures: ${output}")
endif()
