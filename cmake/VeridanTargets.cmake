# How every target of this project is built: one dialect, one set of warnings, one folder for what is run.

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)

# The platform's sources: a folder named after the operating system beside the common headers.
if(WIN32)
  set(VERIDAN_PLATFORM win32)
  include(VeridanWindows)
else()
  set(VERIDAN_PLATFORM posix)
endif()

include(VeridanCompiler)

set(VERIDAN_SANITIZE "" CACHE STRING "Sanitizers, as in -fsanitize=")
if(VERIDAN_SANITIZE)
  add_compile_options(-fsanitize=${VERIDAN_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${VERIDAN_SANITIZE})
endif()

# veridan_library(NAME SOURCES ... [PUBLIC ...] [PRIVATE ...]): one folder of the product as a static library.
# Includes are written from the root of the tree ("logging/Log.h").
function(veridan_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;PUBLIC;PRIVATE" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/interfaces)
  target_link_libraries(${name} PUBLIC ${ARG_PUBLIC} PRIVATE ${ARG_PRIVATE} veridan_warnings)
endfunction()

# veridan_module(NAME SOURCES ... [PRIVATE ...] [DESCRIPTION text] [EXPORTS ...]): a shared library without a "lib" prefix, as the suite
# names them. DESCRIPTION is what Windows shows of the file, the name by default. EXPORTS lists its symbols ("OrbStrata_*" for several) and hides all others on ELF systems. Hidden
# visibility alone leaves the standard library's templates exported, and its unique symbols keep a library from ever
# being unloaded.
function(veridan_module name)
  cmake_parse_arguments(ARG "" "DESCRIPTION" "SOURCES;PRIVATE;EXPORTS" ${ARGN})
  add_library(${name} SHARED ${ARG_SOURCES})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/interfaces)
  target_link_libraries(${name} PRIVATE ${ARG_PRIVATE} veridan_warnings)
  set_target_properties(${name} PROPERTIES PREFIX "")
  if(WIN32)
    veridan_resources(${name} ${name}.dll VFT_DLL "${ARG_DESCRIPTION}")
  elseif(NOT VERIDAN_SANITIZE)
    target_link_options(${name} PRIVATE -Wl,--no-undefined -Wl,--as-needed)
  endif()
  if(ARG_EXPORTS AND NOT WIN32)
    list(JOIN ARG_EXPORTS "; " exports)
    file(CONFIGURE OUTPUT ${name}.map CONTENT "{ global: @exports@; local: *; };\n" @ONLY)
    target_link_options(${name} PRIVATE "-Wl,--version-script=${CMAKE_CURRENT_BINARY_DIR}/${name}.map")
    set_property(TARGET ${name} APPEND PROPERTY LINK_DEPENDS ${CMAKE_CURRENT_BINARY_DIR}/${name}.map)
  endif()
endfunction()

# veridan_program(NAME SOURCES ... [PRIVATE ...] [DESCRIPTION text])
function(veridan_program name)
  cmake_parse_arguments(ARG "" "DESCRIPTION" "SOURCES;PRIVATE" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/interfaces)
  target_link_libraries(${name} PRIVATE ${ARG_PRIVATE} veridan_warnings)
  if(WIN32)
    veridan_resources(${name} ${name}.exe VFT_APP "${ARG_DESCRIPTION}")
  endif()
endfunction()

# veridan_test(NAME SOURCES ... [PRIVATE ...] [TIMEOUT s] [THREADED]): a GoogleTest program with the project's own main.
# THREADED: what it tests runs on several threads of this process; the thread sanitizer's run is made of these.
function(veridan_test name)
  cmake_parse_arguments(ARG "THREADED" "TIMEOUT" "SOURCES;PRIVATE" ${ARGN})
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 120)
  endif()
  veridan_program(${name} SOURCES ${ARG_SOURCES} PRIVATE ${ARG_PRIVATE} veridan_test_support)
  add_test(NAME ${name} COMMAND ${name} --gtest_brief=1 WORKING_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
  set_tests_properties(${name} PROPERTIES TIMEOUT ${ARG_TIMEOUT})
  if(ARG_THREADED)
    set_tests_properties(${name} PROPERTIES LABELS threaded)
  endif()
  if(NOT WIN32)
    set_tests_properties(${name} PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=minimal")
  endif()
endfunction()
