include(GoogleTest)
find_package(GTest REQUIRED)

# Every benchmark executable hangs off this target; `make bench` builds it
# and runs the executables it names, so benchmarks stay out of `make test`.
add_custom_target(bench_all)

# orvane_add_library(<subsystem> SOURCES ... [PUBLIC_LIBS ...] [PRIVATE_LIBS ...])
# Defines orvane_<subsystem> with the alias Orvane::<subsystem>. Headers are
# included as "<subsystem>/Header.h" from src/.
function(orvane_add_library sub)
  cmake_parse_arguments(ARG "" "" "SOURCES;PUBLIC_LIBS;PRIVATE_LIBS" ${ARGN})
  add_library(orvane_${sub} STATIC ${ARG_SOURCES})
  add_library(Orvane::${sub} ALIAS orvane_${sub})
  target_include_directories(orvane_${sub} PUBLIC ${CMAKE_SOURCE_DIR}/src)
  target_link_libraries(orvane_${sub} PUBLIC ${ARG_PUBLIC_LIBS} PRIVATE ${ARG_PRIVATE_LIBS})
endfunction()

# orvane_add_test(<name> SOURCES ... LIBS ... [LABELS ...] [SERIAL] [TIMEOUT s] [PREFIX p])
# A GoogleTest executable whose cases CTest discovers at test time.
function(orvane_add_test name)
  cmake_parse_arguments(ARG "SERIAL" "TIMEOUT;PREFIX" "SOURCES;LIBS;LABELS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LIBS} GTest::gtest GTest::gtest_main GTest::gmock)
  target_compile_definitions(${name} PRIVATE
    ORVANE_SOURCE_DIR="${CMAKE_SOURCE_DIR}"
    ORVANE_TEST_DATA_DIR="${CMAKE_SOURCE_DIR}/tests/data")
  # Line tables are all a failing test's backtrace needs; full debug
  # information made test sources a quarter slower to compile.
  target_compile_options(${name} PRIVATE -g1)
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 120)
  endif()
  set(props TIMEOUT ${ARG_TIMEOUT})
  if(ARG_LABELS)
    list(APPEND props LABELS "${ARG_LABELS}")
  endif()
  if(ARG_SERIAL)
    list(APPEND props RUN_SERIAL TRUE)
  endif()
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60
    TEST_PREFIX "${ARG_PREFIX}" PROPERTIES ${props})
endfunction()

# orvane_add_benchmark(<name> SOURCES ... LIBS ...)
find_package(benchmark REQUIRED)
function(orvane_add_benchmark name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
  add_executable(${name} EXCLUDE_FROM_ALL ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LIBS} benchmark::benchmark)
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bench)
  add_dependencies(bench_all ${name})
endfunction()
