# The version resource of a Windows file made here, and for the program its
# icon (resource 1, which Explorer shows and the windows load) and its
# manifest (resource 1 of type 24: DPI awareness, the supported versions).
enable_language(RC)

function(vantrel_windows_resources target)
  cmake_parse_arguments(PARSE_ARGV 1 RESOURCE "PROGRAM" "FILE;DESCRIPTION" "")
  set(VANTREL_RC_NAME ${target})
  set(VANTREL_RC_FILE ${RESOURCE_FILE})
  set(VANTREL_RC_DESCRIPTION ${RESOURCE_DESCRIPTION})
  set(VANTREL_RC_VERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}.${PROJECT_VERSION_PATCH}.0)
  set(VANTREL_RC_COMMAS ${PROJECT_VERSION_MAJOR},${PROJECT_VERSION_MINOR},${PROJECT_VERSION_PATCH},0)
  set(packaging ${PROJECT_SOURCE_DIR}/packaging/windows)
  if(RESOURCE_PROGRAM)
    set(VANTREL_RC_FILETYPE VFT_APP)
    configure_file(${packaging}/vantrel-test.manifest ${CMAKE_CURRENT_BINARY_DIR}/${target}.manifest @ONLY)
    set(VANTREL_RC_RESOURCES
      "1 ICON \"${packaging}/vantrel-test.ico\"\n1 24 \"${CMAKE_CURRENT_BINARY_DIR}/${target}.manifest\"\n")
  else()
    set(VANTREL_RC_FILETYPE VFT_DLL)
    set(VANTREL_RC_RESOURCES "")
  endif()
  configure_file(${packaging}/vantrel-test.rc.in ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc @ONLY)
  target_sources(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
endfunction()
