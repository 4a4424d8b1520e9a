#pragma once

/// Marks a symbol that libZorvWorkbook exports; all others are hidden.
#define ZORV_WORKBOOK_EXPORT __attribute__((visibility("default")))
