# The one way in which this project makes targets: a folder is a target, its
# sources are the files in it, and a test folder of the same name tests it.

add_library(quorane_options INTERFACE)
target_include_directories(quorane_options INTERFACE ${CMAKE_SOURCE_DIR}/src)
target_compile_definitions(quorane_options INTERFACE QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII)
target_compile_options(quorane_options INTERFACE
    -Wall -Wextra -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
    $<$<BOOL:${QUORANE_WERROR}>:-Werror>)
if(QUORANE_SANITIZE)
    # With the checks in it the compiler takes initialised values for uninitialised ones.
    target_compile_options(quorane_options INTERFACE -Wno-maybe-uninitialized
        -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    target_link_options(quorane_options INTERFACE -fsanitize=address,undefined)
endif()
if(QUORANE_COVERAGE)
    target_compile_options(quorane_options INTERFACE --coverage -O0)
    target_link_options(quorane_options INTERFACE --coverage)
endif()

# quorane_library(NAME [STATIC|SHARED|MODULE] [PUBLIC libs...] [PRIVATE libs...])
# Every .cpp of the calling folder goes into the library.
function(quorane_library name kind)
    cmake_parse_arguments(arg "" "" "PUBLIC;PRIVATE;SOURCES" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
    file(GLOB headers CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
    add_library(${name} ${kind} ${sources} ${headers} ${arg_SOURCES})
    target_link_libraries(${name} PUBLIC quorane_options ${arg_PUBLIC} PRIVATE ${arg_PRIVATE})
endfunction()

# quorane_program(NAME SOURCE libs...): a program of one source file that composes.
function(quorane_program name source)
    add_executable(${name} ${source})
    target_link_libraries(${name} PRIVATE quorane_options ${ARGN})
endfunction()

# quorane_test(FOLDER libs...): the binary test_FOLDER of all sources in tests/FOLDER,
# each case run by ctest on its own, without a display.
function(quorane_test folder)
    string(REPLACE "/" "_" name test_${folder})
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/${folder}/*.cpp
                                        ${CMAKE_SOURCE_DIR}/tests/${folder}/*.h)
    add_executable(${name} ${sources})
    target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
    target_link_libraries(${name} PRIVATE quorane_options ${ARGN} GTest::gmock GTest::gtest)
    # A list in the property ENVIRONMENT does not survive the discovery before the test.
    set_target_properties(${name} PROPERTIES CROSSCOMPILING_EMULATOR "env;${QUORANE_TEST_ENVIRONMENT}")
    # The HTML engine works in processes of its own beside the test's.
    set(processors 1)
    if("quorane_engine" IN_LIST ARGN)
        set(processors 2)
    endif()
    gtest_discover_tests(${name}
        TEST_PREFIX "${folder}." NO_PRETTY_VALUES
        DISCOVERY_MODE PRE_TEST
        PROPERTIES TIMEOUT 300 PROCESSORS ${processors})
endfunction()

set(QUORANE_TEST_ENVIRONMENT
    "QT_QPA_PLATFORM=offscreen"
    "QTWEBENGINE_DISABLE_SANDBOX=1"
    "QUORANE_BUILD_DIR=${CMAKE_BINARY_DIR}")
