# Flags of every target of this project, in one INTERFACE target.
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTORCC ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

add_library(wendral_flags INTERFACE)
add_library(Wendral::Flags ALIAS wendral_flags)
target_compile_features(wendral_flags INTERFACE cxx_std_20)
target_include_directories(wendral_flags INTERFACE "${PROJECT_SOURCE_DIR}")
target_compile_definitions(wendral_flags INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_NO_FOREACH
  QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(MSVC)
  target_compile_options(wendral_flags INTERFACE /W4 /WX /utf-8)
else()
  target_compile_options(wendral_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual
    -Wimplicit-fallthrough -Werror
    -ffp-contract=off) # the same bits on every processor
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # It sees overlapping copies in the library's std::string that are none (GCC bug 105329).
    target_compile_options(wendral_flags INTERFACE -Wno-restrict)
  endif()
endif()
