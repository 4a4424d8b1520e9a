#pragma once

/// Marks what libConditionalFormatters exports; everything else in it is hidden.
#define CNDFRMT_EXPORT __attribute__((visibility("default")))
