# The flags and the two shapes of target of this project: a library a folder, a test program a folder.

add_library(velarin_flags INTERFACE)
target_compile_options(velarin_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion -Woverloaded-virtual -Wnon-virtual-dtor
    -Wimplicit-fallthrough -Wswitch-enum -Werror)
target_compile_definitions(velarin_flags INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_NO_CAST_FROM_BYTEARRAY
    QT_NO_KEYWORDS QT_NO_FOREACH QT_STRICT_ITERATORS)

if(VELARIN_SANITIZE)
    add_compile_options(-fsanitize=${VELARIN_SANITIZE} -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${VELARIN_SANITIZE})
    if(VELARIN_SANITIZE MATCHES "undefined")
        add_compile_options(-fno-sanitize-recover=undefined)
    endif()
endif()
# gold and bfd take seconds over a debug link of Qt programs; lld takes a moment.
find_program(VELARIN_LLD ld.lld)
if(VELARIN_LLD)
    add_link_options(-fuse-ld=lld)
endif()

# velarin_library(NAME SOURCES ... LINKS ...): a static library of one folder of src/. What stands in LINKS is all that
# the folder may include, so an include of a lower floor does not compile.
function(velarin_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_link_libraries(${name} PUBLIC ${ARG_LINKS} PRIVATE velarin_flags)
endfunction()

# velarin_test(NAME SOURCES ... LINKS ... [LABELS label] [TIMEOUT seconds] [RESOURCES name] [WHOLE]): a test program; each
# test of it is a test of ctest. A program whose tests share a sound server or a display runs them in one process: WHOLE.
# Tests that name the same resource do not run side by side.
function(velarin_test name)
    cmake_parse_arguments(ARG "WHOLE" "TIMEOUT" "SOURCES;LINKS;LABELS;RESOURCES" ${ARGN})
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 60)
    endif()
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ${ARG_LINKS} velarin_test_main velarin_flags)
    # Only what has a value: an empty one is lost on the way to ctest, which then takes the next name for it.
    set(properties TIMEOUT ${ARG_TIMEOUT})
    if(ARG_LABELS)
        list(APPEND properties LABELS "${ARG_LABELS}")
    endif()
    if(ARG_RESOURCES)
        list(APPEND properties RESOURCE_LOCK "${ARG_RESOURCES}")
    endif()
    if(ARG_WHOLE)
        add_test(NAME ${name} COMMAND ${name})
        set_tests_properties(${name} PROPERTIES ${properties})
    else()
        gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES ${properties})
    endif()
endfunction()
