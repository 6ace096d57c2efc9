# The companions: programs beside ptick that use libraries, which ptick does not.
if(PTICK_COMPANIONS)
  add_subdirectory(src/companion)
endif()
