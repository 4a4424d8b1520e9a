# The headers of others that most sources include, parsed once for the libraries and once for the
# programs, whose code is compiled differently. Headers of this project are not among them: each
# source includes what it uses.
file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/precompiled/main.cpp CONTENT "int main() {}\n")

set(common_headers
    <algorithm>
    <chrono>
    <functional>
    <map>
    <memory>
    <mutex>
    <optional>
    <string>
    <string_view>
    <utility>
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
    <boost/variant/variant.hpp>)

add_library(cndfrmt_library_headers OBJECT ${CMAKE_BINARY_DIR}/precompiled/main.cpp)
target_link_libraries(cndfrmt_library_headers PRIVATE Boost::headers cndfrmt_warnings)
target_precompile_headers(cndfrmt_library_headers PRIVATE ${common_headers})

if(CNDFRMT_BUILD_TESTS)
  find_package(GTest REQUIRED)
  add_executable(cndfrmt_test_headers EXCLUDE_FROM_ALL ${CMAKE_BINARY_DIR}/precompiled/main.cpp)
  target_link_libraries(cndfrmt_test_headers PRIVATE Boost::headers GTest::gmock cndfrmt_warnings)
  target_compile_options(cndfrmt_test_headers PRIVATE -O0)
  target_precompile_headers(cndfrmt_test_headers PRIVATE ${common_headers} <gmock/gmock.h>
                            <gtest/gtest.h>)
endif()
