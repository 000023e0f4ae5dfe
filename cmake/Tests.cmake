# wendral_test(TARGET [WIDGETS] SOURCES ... LIBS ... CLASSES ...)
# One executable TARGET of QTest classes; every class is a test of its own for ctest.
function(wendral_test target)
  cmake_parse_arguments(ARG "WIDGETS" "" "SOURCES;LIBS;CLASSES" ${ARGN})
  if(ARG_WIDGETS)
    set(main "${PROJECT_SOURCE_DIR}/tests/support/widgetmain.cpp")
    set(qt Qt6::Widgets Qt6::Test)
  else()
    set(main "${PROJECT_SOURCE_DIR}/tests/support/coremain.cpp")
    set(qt Qt6::Core Qt6::Test)
  endif()
  add_executable(${target} ${main} ${ARG_SOURCES})
  # The test classes' own .moc files are included at the end of their sources.
  set_target_properties(${target} PROPERTIES UNITY_BUILD OFF)
  target_link_libraries(${target} PRIVATE Wendral::Flags ${qt} ${ARG_LIBS})
  target_compile_definitions(${target} PRIVATE
    TEST_DATA_DIR="${PROJECT_SOURCE_DIR}/tests/data"
    PROJECT_DIR="${PROJECT_SOURCE_DIR}")
  foreach(class IN LISTS ARG_CLASSES)
    add_test(NAME ${target}.${class} COMMAND ${target} ${class})
  endforeach()
endfunction()
