#pragma once

/// Marks a symbol that libZorvVisuals exports; all others are hidden.
#define ZORV_VISUALS_EXPORT __attribute__((visibility("default")))
