#pragma once

/// Marks what libZorvHost exports; everything else in it is hidden.
#define ZORV_HOST_EXPORT __attribute__((visibility("default")))
