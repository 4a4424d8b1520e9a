#pragma once

/// Marks a symbol that libZorvHost exports; all others are hidden.
#define ZORV_HOST_EXPORT __attribute__((visibility("default")))
