cmake_minimum_required(VERSION 3.25)
# Installs a build into a folder of its own and fails unless everything is there, and nothing else.
#   cmake -DBUILD=DIR -DTARGET=DIR -DHELP=DIR -DCHMCMD=PROGRAM -DVERSION=1.2.3 -DEXAMPLE=FILE
#     -P check_install.cmake
file(REMOVE_RECURSE "${TARGET}")
execute_process(COMMAND ${CMAKE_COMMAND} --install "${BUILD}" --prefix "${TARGET}"
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)

set(expected
  bin/kalibrierung-auswertung
  bin/kalibrierung-wendral
  lib/kalibrierung-wendral/Wendral
  lib/kalibrierung-wendral/kalibrierung-auswertung
  lib/kalibrierung-wendral/kalibrierung-protokoll
  lib/kalibrierung-wendral/kalibrierung-wendral
  share/applications/kalibrierung-wendral.desktop
  share/doc/kalibrierung-wendral/copyright
  share/doc/kalibrierung-wendral/html
  share/icons/hicolor/scalable/apps/kalibrierung-wendral.svg
  share/metainfo/internal.kalibrierung.wendral.metainfo.xml)
foreach(side IN ITEMS 16 22 24 32 48 64 128 256 512)
  list(APPEND expected share/icons/hicolor/${side}x${side}/apps/kalibrierung-wendral.png)
endforeach()
foreach(program IN ITEMS kalibrierung-wendral kalibrierung-auswertung)
  list(APPEND expected share/man/man1/${program}.1.gz share/man/de/man1/${program}.1.gz)
endforeach()
file(GLOB_RECURSE pages RELATIVE "${HELP}" "${HELP}/*.html" "${HELP}/*.css" "${HELP}/*.png")
foreach(page IN LISTS pages)
  list(APPEND expected share/kalibrierung-wendral/Wendral/${page})
endforeach()
if(CHMCMD)
  list(APPEND expected lib/kalibrierung-wendral/Wendral.chm)
endif()

file(GLOB_RECURSE installed RELATIVE "${TARGET}" "${TARGET}/*")
list(SORT expected)
list(SORT installed)
foreach(path IN LISTS expected)
  if(NOT path IN_LIST installed)
    message(SEND_ERROR "${path} is missing")
  endif()
endforeach()
foreach(path IN LISTS installed)
  if(NOT path IN_LIST expected)
    message(SEND_ERROR "${path} is too much")
  endif()
endforeach()

# Links lead somewhere, wherever the folder is moved to, and the program starts through its own.
foreach(link IN ITEMS bin/kalibrierung-wendral bin/kalibrierung-auswertung lib/kalibrierung-wendral/Wendral share/doc/kalibrierung-wendral/html)
  file(READ_SYMLINK "${TARGET}/${link}" leads_to)
  if(IS_ABSOLUTE "${leads_to}" OR NOT EXISTS "${TARGET}/${link}")
    message(SEND_ERROR "${link} leads to ${leads_to}")
  endif()
endforeach()
if(NOT EXISTS "${TARGET}/lib/kalibrierung-wendral/Wendral/index.html")
  message(SEND_ERROR "The program does not find its pages")
endif()
execute_process(COMMAND "${TARGET}/bin/kalibrierung-auswertung" --protokoll "${TARGET}/protokoll.pdf" "${EXAMPLE}"
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
file(READ "${TARGET}/protokoll.pdf" start LIMIT 5 HEX)
if(NOT start STREQUAL "255044462d") # %PDF-
  message(SEND_ERROR "The installed program writes no protocol")
endif()
function(expect_answer option start)
  execute_process(COMMAND "${TARGET}/bin/kalibrierung-auswertung" ${option}
    OUTPUT_VARIABLE said COMMAND_ERROR_IS_FATAL ANY)
  string(FIND "${said}" "${start}" position)
  if(NOT position EQUAL 0)
    message(SEND_ERROR "kalibrierung-auswertung ${option} says: ${said}")
  endif()
endfunction()
expect_answer(--version "Kalibrierung nach Wendral, Auswertung, Version ${VERSION}\n")
expect_answer(--help "Aufruf: kalibrierung-auswertung [Optionen] DATEI")

# The program with windows has no end of its own: it must still run when its time is up.
set(ENV{QT_QPA_PLATFORM} offscreen)
foreach(variable IN ITEMS HOME XDG_CONFIG_HOME XDG_DATA_HOME)
  set(ENV{${variable}} "${TARGET}/home")
endforeach()
execute_process(COMMAND "${TARGET}/bin/kalibrierung-wendral" TIMEOUT 3 RESULT_VARIABLE ended ERROR_VARIABLE said)
if(NOT ended MATCHES "timeout")
  message(SEND_ERROR "kalibrierung-wendral ended with ${ended}: ${said}")
endif()
