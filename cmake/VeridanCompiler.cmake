# What the compiler is asked for. Warnings are errors, but not with MSVC, which compiles the product elsewhere: a
# warning that nobody here can see must not stop that.

add_library(veridan_warnings INTERFACE)
target_compile_definitions(veridan_warnings INTERFACE QT_NO_KEYWORDS QT_NO_CAST_TO_ASCII
  QT_DISABLE_DEPRECATED_BEFORE=0x050F00)

if(MSVC)
  # The sources are UTF-8, and the standard holds to the letter.
  add_compile_options(/utf-8 /permissive- /Zc:__cplusplus)
  # Constant conditions are where a template or a platform decides (4127).
  target_compile_options(veridan_warnings INTERFACE /W4 /wd4127)
  add_compile_definitions(_CRT_SECURE_NO_WARNINGS)
else()
  target_compile_options(veridan_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wformat=2 -Wundef -Werror
    $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual -Wextra-semi>)
endif()
