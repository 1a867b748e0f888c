# A test program `NAME` of GoogleTest sources. Programs with windows (QT) get the offscreen platform
# from Tests/Support/main.cpp. Each case is a test of its own, found when the tests run.
#
#   room_tests(FoundationTests QT LIBRARIES Platform ROOMS Platform/Foundation SOURCES NSBundleTests.cpp)
function(room_tests name)
    cmake_parse_arguments(ARG "QT" "" "LIBRARIES;ROOMS;SOURCES" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    if(ARG_QT)
        target_sources(${name} PRIVATE ${CMAKE_SOURCE_DIR}/Tests/Support/main.cpp)
        find_package(Qt6 REQUIRED COMPONENTS Test)
        target_link_libraries(${name} PRIVATE Qt6::Widgets Qt6::Test)
    else()
        target_link_libraries(${name} PRIVATE GTest::gtest_main)
    endif()
    target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} GTest::gtest GTest::gmock)
    layer_may_include(${name} Tests/Support ${ARG_ROOMS})
    # What tests cost is their compiling: -O2 takes twice as long.
    target_compile_options(${name} PRIVATE -O1 -g1)
    target_compile_definitions(${name} PRIVATE SOURCE_FOLDER="${CMAKE_SOURCE_DIR}" BUILD_FOLDER="${CMAKE_BINARY_DIR}")
    gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST
        PROPERTIES TIMEOUT 120 ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
endfunction()
