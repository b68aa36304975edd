# LodrinTarget: one place that gives every target its language level, warnings, sanitizers and
# include root.

option(LODRIN_WERROR "Treat warnings as errors (switch off only for packaging)" ON)
set(LODRIN_SANITIZE "" CACHE STRING "Sanitizers for every target, for example address,undefined")
option(LODRIN_COVERAGE "Instrument every target for coverage" OFF)

function(lodrin_target target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR})
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast -Wcast-qual
    -Wcast-align -Wnon-virtual-dtor -Woverloaded-virtual -Wextra-semi -Wimplicit-fallthrough
    -Wformat=2 -Wundef
    $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond -Wlogical-op>
    # GCC 12 sees overlaps in optimised std::string code that are none, and uninitialised parts of a
    # std::variant that are never read.
    "$<$<AND:$<CXX_COMPILER_ID:GNU>,$<NOT:$<CONFIG:Debug>>>:-Wno-restrict;-Wno-maybe-uninitialized>"
    $<$<BOOL:${LODRIN_WERROR}>:-Werror>)
  if(LODRIN_SANITIZE)
    target_compile_options(${target} PUBLIC -fsanitize=${LODRIN_SANITIZE} -fno-omit-frame-pointer
      -fno-sanitize-recover=all)
    target_link_options(${target} PUBLIC -fsanitize=${LODRIN_SANITIZE})
  endif()
  if(LODRIN_COVERAGE)
    target_compile_options(${target} PUBLIC --coverage)
    target_link_options(${target} PUBLIC --coverage)
  endif()
endfunction()

# A library. Its folders add their files with target_sources().
function(lodrin_library name)
  add_library(${name} STATIC)
  lodrin_target(${name})
endfunction()

# lodrin_test(NAME SOURCES a.cpp ... LIBRARIES jet ...): a GoogleTest program.
function(lodrin_test name)
  cmake_parse_arguments(arg "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  lodrin_target(${name})
  # The standard library first: it, and no object of ours that happens to hold a copy, answers for
  # the text functions that gtest needs. So a test links only what it uses.
  target_link_libraries(${name} PRIVATE stdc++ ${arg_LIBRARIES} GTest::gtest GTest::gtest_main)
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60
    PROPERTIES TIMEOUT 600)
endfunction()

# lodrin_test_kinds(NAME): the tests of this program once more on shops kept in an Access 97 file and
# in an encoded one of each version. Left out are those over files of their own, and those that make
# every call fail or cut the power at every write: they take long, and how a page is stored is not
# their subject.
#
# lodrin_test_kinds(NAME PART p FILTER f [ENVIRONMENT e ...]): only the tests that f names. A program has
# its part of those left out above, so that each way to fail meets each kind of file.
function(lodrin_test_kinds name)
  cmake_parse_arguments(arg "" "PART;FILTER" "ENVIRONMENT" ${ARGN})
  if(NOT arg_PART)
    set(arg_FILTER "-*Sweep*:*PowerCut*:*SampleShop*:FileFormatTest*")
  else()
    string(APPEND name _${arg_PART})
  endif()
  foreach(kind jet3 encoded encoded3)
    add_test(NAME ${name}_${kind} COMMAND ${ARGV0} --gtest_brief=1 --gtest_filter=${arg_FILTER})
    set_tests_properties(${name}_${kind} PROPERTIES
      ENVIRONMENT "LODRIN_TEST_SHOP=${kind};${arg_ENVIRONMENT}" LABELS kinds TIMEOUT 600)
  endforeach()
endfunction()
