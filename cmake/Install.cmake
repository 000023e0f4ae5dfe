# What is installed where. A program's parts lie together, for it looks for its help and for its other
# half in its own folder; links bring the programs into the path, and the pages from the place that is
# shared by all processors.
if(WIN32)
  set(WENDRAL_PROGRAM_DIR ".")
  set(WENDRAL_PAGES_DIR "Wendral")
else()
  set(WENDRAL_PROGRAM_DIR "lib/kalibrierung-wendral")
  set(WENDRAL_PAGES_DIR "share/kalibrierung-wendral/Wendral")
endif()

# Links PLACE below the prefix to TARGET, which is relative to PLACE's folder.
function(wendral_install_link target place)
  cmake_path(GET place PARENT_PATH folder)
  install(CODE "
    set(root \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}\")
    file(MAKE_DIRECTORY \"\${root}/${folder}\")
    file(CREATE_LINK \"${target}\" \"\${root}/${place}\" SYMBOLIC)")
endfunction()

function(wendral_install_programs)
  install(TARGETS kalibrierung_wendral kalibrierung_auswertung kalibrierung_protokoll
    RUNTIME DESTINATION "${WENDRAL_PROGRAM_DIR}")
  if(WIN32)
    return()
  endif()
  wendral_install_link(../lib/kalibrierung-wendral/kalibrierung-wendral bin/kalibrierung-wendral)
  wendral_install_link(../lib/kalibrierung-wendral/kalibrierung-auswertung bin/kalibrierung-auswertung)
  wendral_install_link(../../share/kalibrierung-wendral/Wendral lib/kalibrierung-wendral/Wendral)
  wendral_install_link(../../kalibrierung-wendral/Wendral share/doc/kalibrierung-wendral/html)
endfunction()
