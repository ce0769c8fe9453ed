# The house rules of the build: warnings, sanitizers, one library for each folder.

option(ZEP_SANITIZE "Build with the address and undefined-behaviour sanitizers" OFF)
option(ZEP_WERROR "Make warnings errors: in CI, not for a user's newer compiler" OFF)
option(ZEP_FUZZ "Build the fuzz targets as fuzzers, all rooms instrumented for them (needs clang)" OFF)

find_program(CCACHE ccache)
if(CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

add_library(house INTERFACE)
target_compile_options(house INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion
    -Wnon-virtual-dtor -Woverloaded-virtual $<$<BOOL:${ZEP_WERROR}>:-Werror>)
target_compile_definitions(house INTERFACE QT_NO_CAST_FROM_BYTEARRAY QT_NO_FOREACH QT_NO_KEYWORDS
    QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(ZEP_SANITIZE)
    # The compiler takes the sanitizers' own bookkeeping of temporaries for uninitialized reads.
    target_compile_options(house INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=undefined
        -fno-omit-frame-pointer -Wno-maybe-uninitialized)
    target_link_options(house INTERFACE -fsanitize=address,undefined)
endif()
if(ZEP_FUZZ)
    target_compile_options(house INTERFACE -fsanitize=fuzzer-no-link,address,undefined
        -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    target_link_options(house INTERFACE -fsanitize=address,undefined)
endif()

# zep_room(NAME PATH USES room... LINKS target... SOURCES file...): the library of one folder, src/PATH.
#
# A room sees its own headers and those of the rooms it uses, and no others: each room exports its headers through a
# folder of its own in which nothing but that room can be found, so an include against the arrows doesn't compile.
function(zep_room name path)
    cmake_parse_arguments(ROOM "" "" "USES;LINKS;PRIVATE_LINKS;SOURCES" ${ARGN})
    add_library(${name} STATIC ${ROOM_SOURCES})
    set(doorway ${CMAKE_BINARY_DIR}/doorways/${name})
    cmake_path(GET path PARENT_PATH parent)
    file(MAKE_DIRECTORY ${doorway}/${parent})
    file(CREATE_LINK ${CMAKE_SOURCE_DIR}/src/${path} ${doorway}/${path} SYMBOLIC)
    target_include_directories(${name} PUBLIC ${doorway})
    target_link_libraries(${name} PUBLIC house ${ROOM_LINKS} PRIVATE ${ROOM_USES} ${ROOM_PRIVATE_LINKS})
endfunction()

# zep_own_files(): puts the files that come with the program, rather than with a practice, beside the program built in
# this folder: the template of the deleted acts and the guide.
function(zep_own_files)
    configure_file(${CMAKE_SOURCE_DIR}/reports/ZEP_Supp.RPT ${CMAKE_CURRENT_BINARY_DIR}/ZEP_Supp.RPT COPYONLY)
    foreach(page guide report-templates.md)
        file(CREATE_LINK ${CMAKE_SOURCE_DIR}/docs/${page} ${CMAKE_CURRENT_BINARY_DIR}/${page} SYMBOLIC)
    endforeach()
endfunction()
