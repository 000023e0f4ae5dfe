# What is installed where. The program and Wendral.chm lie together, for it looks for its help in its
# own folder; a link brings it into the path.
include(GNUInstallDirs)
if(WIN32)
  set(WENDRAL_PROGRAM_DIR ".")
else()
  set(WENDRAL_PROGRAM_DIR "lib/kalibrierung-wendral")
endif()

function(wendral_install_programs)
  install(TARGETS kalibrierung_wendral RUNTIME DESTINATION "${WENDRAL_PROGRAM_DIR}")
  if(WIN32)
    install(TARGETS kalibrierung_auswertung RUNTIME DESTINATION "${WENDRAL_PROGRAM_DIR}")
    return()
  endif()
  install(TARGETS kalibrierung_auswertung RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
  install(CODE "
    set(bin \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}\")
    file(MAKE_DIRECTORY \"\${bin}\")
    file(CREATE_LINK ../${WENDRAL_PROGRAM_DIR}/kalibrierung-wendral
      \"\${bin}/kalibrierung-wendral\" SYMBOLIC)")
endfunction()
