# Installs the built library into a scratch prefix, then configures, builds and runs
# examples/consumer against it with find_package(OrvBase). Fails on any step.
file(REMOVE_RECURSE ${WORK_DIR})
set(prefix ${WORK_DIR}/prefix)

function(run_step)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "step failed (${result}): ${ARGN}\n${out}\n${err}")
  endif()
  set(step_output "${out}" PARENT_SCOPE)
endfunction()

run_step(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})
run_step(${CMAKE_COMMAND} -S ${CONSUMER_SOURCE} -B ${WORK_DIR}/build -DCMAKE_PREFIX_PATH=${prefix}
  -DCMAKE_BUILD_TYPE=Release)
run_step(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
run_step(${WORK_DIR}/build/orv_consumer)
if(NOT step_output MATCHES "consumer: orv base 3 tokens, 1.500000")
  message(FATAL_ERROR "unexpected consumer output: ${step_output}")
endif()
message(STATUS "consumer output: ${step_output}")
