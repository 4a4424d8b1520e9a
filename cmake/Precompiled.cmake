# The headers that most sources include, parsed once for the libraries, once for the loader and the
# tool, and once for the tests, which are compiled with other options: those of the standard library, Boost and fmt, and of
# this project those whose templates take the longest to instantiate. Each source still includes what
# it uses: clang-tidy reads the sources without precompiled headers.
file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/precompiled/main.cpp CONTENT "int main() {}\n")

set(common_headers
    <algorithm>
    <array>
    <charconv>
    <chrono>
    <cmath>
    <functional>
    <limits>
    <map>
    <memory>
    <mutex>
    <numeric>
    <optional>
    <set>
    <span>
    <string>
    <string_view>
    <unordered_map>
    <utility>
    <variant>
    <vector>
    <boost/container_hash/hash.hpp>
    <boost/numeric/conversion/cast.hpp>
    <boost/optional.hpp>
    <boost/smart_ptr/intrusive_ptr.hpp>
    <boost/unordered_map.hpp>
    <boost/utility/string_ref.hpp>
    <boost/uuid/uuid.hpp>
    <boost/variant/apply_visitor.hpp>
    <boost/variant/get.hpp>
    <boost/variant/variant.hpp>
    <fmt/format.h>
    <FormulaModel/FormulaValueAccess.h>
    <DOM/Table.h>)

# Sources that share them must agree about fmt's macros, whether they call fmt or not.
target_compile_definitions(
  cndfrmt_warnings INTERFACE $<TARGET_PROPERTY:fmt::fmt,INTERFACE_COMPILE_DEFINITIONS>)

add_library(cndfrmt_library_headers OBJECT ${CMAKE_BINARY_DIR}/precompiled/main.cpp)
target_include_directories(cndfrmt_library_headers PRIVATE ${PROJECT_SOURCE_DIR}/host)
target_link_libraries(cndfrmt_library_headers PRIVATE Boost::headers fmt::fmt cndfrmt_warnings)
target_precompile_headers(cndfrmt_library_headers PRIVATE ${common_headers}
                                                          <Formulas/Evaluation/Evaluator.h>)

if(CNDFRMT_BUILD_TESTS)
  find_package(GTest REQUIRED)
  add_executable(cndfrmt_test_headers EXCLUDE_FROM_ALL ${CMAKE_BINARY_DIR}/precompiled/main.cpp)
  target_include_directories(cndfrmt_test_headers PRIVATE ${PROJECT_SOURCE_DIR}/host)
  target_link_libraries(cndfrmt_test_headers PRIVATE Boost::headers GTest::gmock fmt::fmt
                                                     cndfrmt_warnings)
  target_compile_options(cndfrmt_test_headers PRIVATE ${cndfrmt_test_options})
  target_precompile_headers(cndfrmt_test_headers PRIVATE ${common_headers} <gmock/gmock.h>
                            <gtest/gtest.h>)
endif()
