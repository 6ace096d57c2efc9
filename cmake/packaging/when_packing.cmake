# Read by CPack at its start, once for each kind of package. All that is packed has the time of the
# last commit, unless SOURCE_DATE_EPOCH gives another: the same sources make the same packages.
if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
  execute_process(COMMAND git -C ${CMAKE_CURRENT_LIST_DIR} log -1 --format=%ct
    OUTPUT_VARIABLE commit_time OUTPUT_STRIP_TRAILING_WHITESPACE RESULT_VARIABLE failed)
  if(failed)
    message(FATAL_ERROR "no commit here to take the time from: set SOURCE_DATE_EPOCH")
  endif()
  set(ENV{SOURCE_DATE_EPOCH} ${commit_time})
endif()
