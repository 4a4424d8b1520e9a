#pragma once

#include <cstddef>
#include <string>

#include "render/Html/PageAccounts.h"
#include "render/Picture.h"

namespace Zorv::Render {

/// Data for the script of a page beside its table, as JSON: rules, their ranges, and the accounts
/// of cells in the ranges of rules.
struct PageData {
  std::string json;
  std::size_t accountCount = 0;  ///< cells with an account
  bool isCut = false;            ///< cells in the ranges of rules are left without one
};

/// `accounts` may be null. The first cells get accounts, row by row, at most `accountLimit`, and
/// until their texts take `byteLimit` bytes: equal texts and equal accounts are there once.
[[nodiscard]] PageData writePageData(Picture const& picture, PageAccounts* accounts,
                                     std::size_t accountLimit, std::size_t byteLimit);

}  // namespace Zorv::Render
