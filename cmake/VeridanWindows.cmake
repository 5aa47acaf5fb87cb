# What only the Windows build needs: the API's level, protections of the image, its resources, and the libraries that
# have to stand beside each program.

enable_language(RC)

add_compile_definitions(UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN WINVER=0x0601 _WIN32_WINNT=0x0601)
# Relocatable to random addresses, no execution of data; and a loader that finds an image without symbols.
if(MSVC)
  add_link_options(/DYNAMICBASE /NXCOMPAT)
else()
  add_link_options(-Wl,--dynamicbase -Wl,--nxcompat $<$<CONFIG:Release>:-s>)
endif()

# veridan_resources(TARGET FILE_NAME VFT_APP|VFT_DLL DESCRIPTION): the version, and a program's manifest: without one
# Windows sends what a program may not write to a private copy of the file. MSVC's linker makes the same manifest.
function(veridan_resources target file_name file_type description)
  if(NOT description)
    set(description ${target})
  endif()
  set(manifest "")
  if(file_type STREQUAL VFT_APP AND NOT MSVC)
    set(manifest "1 24 \"${PROJECT_SOURCE_DIR}/cmake/program.manifest\"")
  endif()
  string(REPLACE . , version_numbers ${PROJECT_VERSION}.0)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/resources.rc.in ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc @ONLY)
  target_sources(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
endfunction()

# Windows looks for a program's libraries in the program's folder first: links there save a search path.
if(VERIDAN_WIN32_SDK)
  file(GLOB runtime_libraries ${VERIDAN_WIN32_SDK}/bin/*.dll)
  file(GLOB platform_plugins ${VERIDAN_WIN32_SDK}/plugins/platforms/*.dll)
  file(MAKE_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/platforms)
  foreach(library ${runtime_libraries})
    get_filename_component(library_name ${library} NAME)
    file(CREATE_LINK ${library} ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${library_name} COPY_ON_ERROR SYMBOLIC)
  endforeach()
  foreach(library ${platform_plugins})
    get_filename_component(library_name ${library} NAME)
    file(CREATE_LINK ${library} ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/platforms/${library_name} COPY_ON_ERROR SYMBOLIC)
  endforeach()
endif()
