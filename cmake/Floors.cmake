# The floors of the house. A target sees only its own folder and those of the targets that it names in USES: each has an
# include directory of links to the headers directly in its folder, so an include that goes up a floor does not build.

set(GLINTARA_FLOORS_DIR ${CMAKE_BINARY_DIR}/floors)

set(GLINTARA_WARNINGS -Wall -Wextra -Wpedantic -Wconversion)
if(GLINTARA_WERROR)
    list(APPEND GLINTARA_WARNINGS -Werror)
endif()

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

# The include directory that shows `paths` (single folders or files, from the top of the project) to a target. A folder
# of links rather than the top itself, or a parent folder: those would show higher floors too.
function(floor_include_directory name)
    set(root ${GLINTARA_FLOORS_DIR}/${name})
    file(REMOVE_RECURSE ${root})
    foreach(path IN LISTS ARGN)
        file(GLOB headers RELATIVE ${CMAKE_SOURCE_DIR} CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${path}/*.h)
        if(NOT IS_DIRECTORY ${CMAKE_SOURCE_DIR}/${path})
            set(headers ${path})
        endif()
        foreach(header IN LISTS headers)
            get_filename_component(parent ${root}/${header} DIRECTORY)
            file(MAKE_DIRECTORY ${parent})
            file(CREATE_LINK ${CMAKE_SOURCE_DIR}/${header} ${root}/${header} SYMBOLIC)
        endforeach()
    endforeach()
endfunction()

# floor_library(FOLDER [EXCEPT file...] [USES target...]): one library of the sources directly in a folder, named after
# it: `engine/astro` is the target `engine_astro`.
function(floor_library folder)
    cmake_parse_arguments(arg "" "" "EXCEPT;USES" ${ARGN})
    string(REPLACE "/" "_" name ${folder})
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${folder}/*.cpp ${CMAKE_SOURCE_DIR}/${folder}/*.h)
    foreach(file IN LISTS arg_EXCEPT)
        list(REMOVE_ITEM sources ${CMAKE_SOURCE_DIR}/${folder}/${file})
    endforeach()
    floor_include_directory(${name} ${folder})
    set_property(GLOBAL APPEND PROPERTY GLINTARA_FLOORS ${name})
    if(NOT sources MATCHES "\\.cpp")
        # Headers alone.
        add_library(${name} INTERFACE)
        target_include_directories(${name} INTERFACE ${GLINTARA_FLOORS_DIR}/${name})
        target_link_libraries(${name} INTERFACE ${arg_USES})
        return()
    endif()
    add_library(${name} STATIC ${sources})
    set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX)
    target_include_directories(${name} PUBLIC ${GLINTARA_FLOORS_DIR}/${name})
    target_link_libraries(${name} PUBLIC ${arg_USES} PRIVATE glintara_options)
endfunction()

# floor_header(FILE): shows one header of a folder and nothing else of it; the target is named after the folder.
function(floor_header file)
    get_filename_component(folder ${file} DIRECTORY)
    string(REPLACE "/" "_" name ${folder})
    floor_include_directory(${name}_header ${file})
    add_library(${name}_header INTERFACE)
    target_include_directories(${name}_header INTERFACE ${GLINTARA_FLOORS_DIR}/${name}_header)
endfunction()
