# Run when ctest starts, for one test program: writes FILE, which names its tests to ctest. Suites
# whose name matches TOGETHER are one test each, and so one process; of all others each test has a
# process of its own. PROPERTIES are those of every test.

execute_process(COMMAND "${PROGRAM}" --gtest_list_tests
    OUTPUT_VARIABLE listing RESULT_VARIABLE result TIMEOUT 60)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "${PROGRAM} does not list its tests: ${result}")
endif()

set(commands "")
function(add_case name filter)
    string(APPEND commands
        "add_test([==[${name}]==] [==[${PROGRAM}]==] [==[--gtest_filter=${filter}]==])\n"
        "set_tests_properties([==[${name}]==] PROPERTIES ${PROPERTIES})\n")
    set(commands "${commands}" PARENT_SCOPE)
endfunction()

string(REPLACE ";" "\\;" listing "${listing}")
string(REPLACE "\n" ";" listing "${listing}")
foreach(line IN LISTS listing)
    string(REGEX REPLACE " *#.*" "" name "${line}") # the value of a parameter
    if(name MATCHES "^  (.+)")
        if(NOT together)
            add_case("${suite}.${CMAKE_MATCH_1}" "${suite}.${CMAKE_MATCH_1}")
        endif()
    elseif(name MATCHES "^([^ ]+)\\.$")
        set(suite "${CMAKE_MATCH_1}")
        set(together OFF)
        if(TOGETHER AND suite MATCHES "^(${TOGETHER})$")
            set(together ON)
            add_case("${suite}" "${suite}.*")
        endif()
    endif()
endforeach()
file(WRITE "${FILE}" "${commands}")
