#pragma once

#include <cstdint>

/// Whose measured values are meant.
enum PrüfmerkmalEnum : std::int32_t { pmDirekt = 0, pmIndirekt = 1 };

/// A characteristic in the statistics and number formats; mZ is the covariable.
enum MerkmalEnum : std::int32_t { mDirekt = 0, mIndirekt = 1, mZ = 2 };
