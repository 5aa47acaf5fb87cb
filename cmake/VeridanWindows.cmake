# What only the Windows build needs: the API's level, protections of the image, a version resource, and the libraries
# that have to stand beside each program.

enable_language(RC)

add_compile_definitions(UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN WINVER=0x0601 _WIN32_WINNT=0x0601)
# Relocatable to random addresses, no execution of data; and a loader that finds an image without symbols.
add_link_options(-Wl,--dynamicbase -Wl,--nxcompat $<$<CONFIG:Release>:-s>)

# veridan_version_resource(TARGET FILE_NAME VFT_APP|VFT_DLL)
function(veridan_version_resource target file_name file_type)
  string(REPLACE . , version_numbers ${PROJECT_VERSION}.0)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/version.rc.in ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc @ONLY)
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
