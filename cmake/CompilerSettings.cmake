# The settings every target of the project is compiled and linked with.
#
# connectdialog_settings is an interface library: targets link it PRIVATE, so that nothing of it reaches the users of
# the installed library.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

option(CONNECTDIALOG_SANITIZE "Address and undefined behaviour sanitizers" OFF)

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
endif()

add_library(connectdialog_settings INTERFACE)
target_compile_options(connectdialog_settings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Werror)
target_compile_definitions(connectdialog_settings INTERFACE $<$<CONFIG:Debug>:_GLIBCXX_ASSERTIONS>)
# -z now: lazy binding spills registers to the stack, where a secret could stay behind.
target_link_options(connectdialog_settings INTERFACE -Wl,-z,relro -Wl,-z,now)
if(CONNECTDIALOG_SANITIZE)
    target_compile_options(connectdialog_settings INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(connectdialog_settings INTERFACE -fsanitize=address,undefined)
endif()
