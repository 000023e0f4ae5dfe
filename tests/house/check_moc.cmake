cmake_minimum_required(VERSION 3.25)
# Fails on a byte outside ASCII in what moc has generated: moc drops or cuts such names without a word.
#   cmake -DBUILD=DIR -P check_moc.cmake
file(GLOB_RECURSE generated "${BUILD}/moc_*.cpp" "${BUILD}/*.moc")
list(LENGTH generated count)
if(count EQUAL 0)
  message(FATAL_ERROR "no moc output below ${BUILD}")
endif()
foreach(file IN LISTS generated)
  file(READ "${file}" hex HEX)
  if(hex MATCHES "^(..)*[89a-f].")
    message(SEND_ERROR "${file} has a byte outside ASCII")
  endif()
endforeach()
