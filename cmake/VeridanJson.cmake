# nlohmann/json, which is headers only: Debian's package serves the Windows build too. There, the folder is linked alone,
# as beside it lie headers of this machine's own system.
find_path(NLOHMANN_JSON_FOLDER nlohmann/json.hpp REQUIRED NO_CMAKE_FIND_ROOT_PATH)
set(json_folder ${NLOHMANN_JSON_FOLDER})
if(WIN32)
  set(json_folder ${CMAKE_BINARY_DIR}/json)
  file(MAKE_DIRECTORY ${json_folder})
  file(CREATE_LINK ${NLOHMANN_JSON_FOLDER}/nlohmann ${json_folder}/nlohmann COPY_ON_ERROR SYMBOLIC)
endif()
add_library(nlohmann_json::nlohmann_json INTERFACE IMPORTED GLOBAL)
target_include_directories(nlohmann_json::nlohmann_json INTERFACE ${json_folder})
