# The floors of the house. A target sees only the folders of its own floor and of the targets that it names in USES:
# each gets an include directory of links to its own folders, so an include that goes up a floor does not build.

set(GLINTARA_FLOORS_DIR ${CMAKE_BINARY_DIR}/floors)

set(GLINTARA_WARNINGS -Wall -Wextra -Wpedantic -Wconversion -Werror)

# Compiler and linker options that every target of the project shares.
add_library(glintara_options INTERFACE)
target_compile_options(glintara_options INTERFACE ${GLINTARA_WARNINGS})
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # g++ 12 sees overlapping copies in every "literal" + std::string (its bug 105651).
    target_compile_options(glintara_options INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-Wno-restrict>)
endif()
if(GLINTARA_SANITIZE)
    target_compile_options(glintara_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(glintara_options INTERFACE -fsanitize=address,undefined)
endif()
if(GLINTARA_FUZZ)
    target_compile_options(glintara_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# The include directory that shows `folders` (paths from the top of the project) to a target.
function(floor_include_directory name)
    set(root ${GLINTARA_FLOORS_DIR}/${name})
    file(REMOVE_RECURSE ${root})
    foreach(folder IN LISTS ARGN)
        get_filename_component(parent ${root}/${folder} DIRECTORY)
        file(MAKE_DIRECTORY ${parent})
        file(CREATE_LINK ${CMAKE_SOURCE_DIR}/${folder} ${root}/${folder} SYMBOLIC)
    endforeach()
endfunction()

# floor_library(NAME STATIC FOLDERS dir... USES target...): one library of all sources directly in the folders.
function(floor_library name type)
    cmake_parse_arguments(arg "" "" "FOLDERS;USES" ${ARGN})
    set(sources "")
    foreach(folder IN LISTS arg_FOLDERS)
        file(GLOB found CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${folder}/*.cpp ${CMAKE_SOURCE_DIR}/${folder}/*.h)
        list(APPEND sources ${found})
    endforeach()
    floor_include_directory(${name} ${arg_FOLDERS})
    if(NOT sources MATCHES "\\.cpp")
        # Headers alone.
        add_library(${name} INTERFACE)
        target_include_directories(${name} INTERFACE ${GLINTARA_FLOORS_DIR}/${name})
        target_link_libraries(${name} INTERFACE ${arg_USES})
        return()
    endif()
    add_library(${name} ${type} ${sources})
    set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX)
    target_include_directories(${name} PUBLIC ${GLINTARA_FLOORS_DIR}/${name})
    target_link_libraries(${name} PUBLIC ${arg_USES} PRIVATE glintara_options)
endfunction()
