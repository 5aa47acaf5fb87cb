# Libraries that are headers only: Debian's packages serve the Windows build too. There, a library's folder is linked
# alone, as beside it lie headers of this machine's own system.

# veridan_headers(target folder header)
function(veridan_headers target folder header)
  find_path(VERIDAN_${folder}_PARENT ${folder}/${header} REQUIRED NO_CMAKE_FIND_ROOT_PATH)
  set(parent ${VERIDAN_${folder}_PARENT})
  if(WIN32)
    set(parent ${CMAKE_BINARY_DIR}/headers/${folder})
    file(MAKE_DIRECTORY ${parent})
    file(CREATE_LINK ${VERIDAN_${folder}_PARENT}/${folder} ${parent}/${folder} COPY_ON_ERROR SYMBOLIC)
  endif()
  add_library(${target} INTERFACE IMPORTED GLOBAL)
  target_include_directories(${target} INTERFACE ${parent})
endfunction()

veridan_headers(nlohmann_json::nlohmann_json nlohmann json.hpp)
veridan_headers(websocketpp::websocketpp websocketpp server.hpp)
# It takes MinGW's library for one without threads, and Windows for its byte order.
target_compile_definitions(websocketpp::websocketpp INTERFACE _WEBSOCKETPP_CPP11_THREAD_)
target_link_libraries(websocketpp::websocketpp INTERFACE $<$<BOOL:${WIN32}>:ws2_32>)
