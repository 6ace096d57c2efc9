# write_debian_changelog(CHANGELOG FILE): FILE.gz is the entry of the package's version, in the form that
# Debian packages have, made from the section of that version in CHANGELOG.
function(write_debian_changelog changelog file)
  if(NOT PTICK_PACKAGE)
    set(PTICK_PACKAGE ptick)
  endif()
  file(READ ${changelog} text)
  string(REPLACE "." "\\." version "${CPACK_PACKAGE_VERSION}")
  if(NOT text MATCHES "\n## ${version}[^\n]*\n(.*)")
    message(FATAL_ERROR "${changelog} has no section of version ${CPACK_PACKAGE_VERSION}")
  endif()
  set(changes "${CMAKE_MATCH_1}")
  string(FIND "${changes}" "\n## " next_section)
  string(SUBSTRING "${changes}" 0 ${next_section} changes)
  string(STRIP "${changes}" changes)
  string(REPLACE "\n" "\n  " changes "  ${changes}\n")
  string(REGEX REPLACE "(^|\n)  - " "\\1  * " changes "${changes}")
  file(WRITE ${file} "${changes}")
  execute_process(COMMAND fmt --tagged-paragraph --width=78 ${file}
    OUTPUT_VARIABLE changes OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  # The time is that of SOURCE_DATE_EPOCH.
  string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
  file(WRITE ${file} "${PTICK_PACKAGE} (${CPACK_PACKAGE_VERSION}) unstable; urgency=medium\n\n${changes}\n\n"
    " -- ${CPACK_PACKAGE_CONTACT}  ${date}\n")
  execute_process(COMMAND gzip -9n ${file} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# As a script: for a package that CPack does not make.
if(CMAKE_SCRIPT_MODE_FILE STREQUAL CMAKE_CURRENT_LIST_FILE)
  write_debian_changelog(${PTICK_CHANGELOG} ${PTICK_FILE})
endif()
