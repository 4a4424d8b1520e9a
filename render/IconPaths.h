#pragma once

#include <string_view>

// Paths of the icons, in the notation of SVG: absolute M, L, C and Z in a box of 16 x 16. A rim
// lies below the shape of the same name and is a little larger.
namespace Zorv::Render::IconPaths {

// Arrows: one arrow, turned by 45 degrees.
inline constexpr std::string_view arrowUpRim =
    "M7.37 1.45C7.72 1.09 8.28 1.09 8.63 1.45L13.97 6.95C14.32 7.31 14.2 7.6 13.7 7.6L11.6 7.6"
    "C11.1 7.6 10.7 8 10.7 8.5L10.7 14.3C10.7 14.79 10.29 15.2 9.8 15.2L6.2 15.2"
    "C5.71 15.2 5.3 14.79 5.3 14.3L5.3 8.5C5.3 8 4.89 7.6 4.4 7.6L2.3 7.6"
    "C1.81 7.6 1.68 7.31 2.03 6.95Z";
inline constexpr std::string_view arrowUp =
    "M8 2.16L12.35 6.65L9.75 6.65L9.75 14.25L6.25 14.25L6.25 6.65L3.65 6.65Z";
inline constexpr std::string_view arrowUpRightRim =
    "M12.6 2.51C13.09 2.51 13.49 2.91 13.49 3.4L13.36 11.83C13.35 12.33 13.06 12.45 12.71 12.1"
    "L11 10.39C10.65 10.04 10.08 10.04 9.73 10.39L5.2 14.92C4.85 15.27 4.28 15.27 3.93 14.92"
    "L1.08 12.07C0.73 11.72 0.73 11.15 1.08 10.8L5.61 6.27C5.96 5.92 5.96 5.35 5.61 5L3.9 3.29"
    "C3.55 2.94 3.67 2.65 4.17 2.64Z";
inline constexpr std::string_view arrowUpRight =
    "M12.53 3.47L12.43 10.47L10.37 8.41L4.56 14.22L1.78 11.44L7.59 5.63L5.53 3.57Z";
inline constexpr std::string_view arrowRightRim =
    "M14.55 7.37C14.91 7.72 14.91 8.28 14.55 8.63L9.05 13.97C8.69 14.32 8.4 14.2 8.4 13.7L8.4 11.6"
    "C8.4 11.1 8 10.7 7.5 10.7L1.7 10.7C1.21 10.7 0.8 10.29 0.8 9.8L0.8 6.2"
    "C0.8 5.71 1.21 5.3 1.7 5.3L7.5 5.3C8 5.3 8.4 4.89 8.4 4.4L8.4 2.3"
    "C8.4 1.81 8.69 1.68 9.05 2.03Z";
inline constexpr std::string_view arrowRight =
    "M13.84 8L9.35 12.35L9.35 9.75L1.75 9.75L1.75 6.25L9.35 6.25L9.35 3.65Z";
inline constexpr std::string_view arrowDownRightRim =
    "M13.49 12.6C13.49 13.09 13.09 13.49 12.6 13.49L4.17 13.36C3.67 13.35 3.55 13.06 3.9 12.71"
    "L5.61 11C5.96 10.65 5.96 10.08 5.61 9.73L1.08 5.2C0.73 4.85 0.73 4.28 1.08 3.93L3.93 1.08"
    "C4.28 0.73 4.85 0.73 5.2 1.08L9.73 5.61C10.08 5.96 10.65 5.96 11 5.61L12.71 3.9"
    "C13.06 3.55 13.35 3.67 13.36 4.17Z";
inline constexpr std::string_view arrowDownRight =
    "M12.53 12.53L5.53 12.43L7.59 10.37L1.78 4.56L4.56 1.78L10.37 7.59L12.43 5.53Z";
inline constexpr std::string_view arrowDownRim =
    "M8.63 14.55C8.28 14.91 7.72 14.91 7.37 14.55L2.03 9.05C1.68 8.69 1.81 8.4 2.3 8.4L4.4 8.4"
    "C4.9 8.4 5.3 8 5.3 7.5L5.3 1.7C5.3 1.21 5.71 0.8 6.2 0.8L9.8 0.8C10.29 0.8 10.7 1.21 10.7 1.7"
    "L10.7 7.5C10.7 8 11.1 8.4 11.6 8.4L13.7 8.4C14.2 8.4 14.32 8.69 13.97 9.05Z";
inline constexpr std::string_view arrowDown =
    "M8 13.84L3.65 9.35L6.25 9.35L6.25 1.75L9.75 1.75L9.75 9.35L12.35 9.35Z";

// Discs, and what stands on them.
inline constexpr std::string_view disc =
    "M8 0.8C11.98 0.8 15.2 4.02 15.2 8C15.2 11.98 11.98 15.2 8 15.2C4.02 15.2 0.8 11.98 0.8 8"
    "C0.8 4.02 4.02 0.8 8 0.8Z";
inline constexpr std::string_view discInner =
    "M8 1.8C11.42 1.8 14.2 4.58 14.2 8C14.2 11.42 11.42 14.2 8 14.2C4.58 14.2 1.8 11.42 1.8 8"
    "C1.8 4.58 4.58 1.8 8 1.8Z";
inline constexpr std::string_view glintHigh =
    "M8 3.1C8.88 3.1 9.6 3.82 9.6 4.7C9.6 5.58 8.88 6.3 8 6.3C7.12 6.3 6.4 5.58 6.4 4.7"
    "C6.4 3.82 7.12 3.1 8 3.1Z";
inline constexpr std::string_view glintMiddle =
    "M8 6.4C8.88 6.4 9.6 7.12 9.6 8C9.6 8.88 8.88 9.6 8 9.6C7.12 9.6 6.4 8.88 6.4 8"
    "C6.4 7.12 7.12 6.4 8 6.4Z";
inline constexpr std::string_view glintLow =
    "M8 9.7C8.88 9.7 9.6 10.42 9.6 11.3C9.6 12.18 8.88 12.9 8 12.9C7.12 12.9 6.4 12.18 6.4 11.3"
    "C6.4 10.42 7.12 9.7 8 9.7Z";
inline constexpr std::string_view crossInDisc =
    "M10.69 3.76L12.24 5.31L9.56 8L12.24 10.69L10.69 12.24L8 9.56L5.31 12.24L3.76 10.69L6.44 8"
    "L3.76 5.31L5.31 3.76L8 6.44Z";
inline constexpr std::string_view bangInDisc =
    "M6.72 3.8C6.71 3.58 6.88 3.4 7.1 3.4L8.9 3.4C9.12 3.4 9.29 3.58 9.28 3.8L9 9.2"
    "C8.98 9.42 8.79 9.6 8.57 9.6L7.43 9.6C7.21 9.6 7.02 9.42 7 9.2ZM6.9 10.6L9.1 10.6L9.1 12.8"
    "L6.9 12.8Z";
inline constexpr std::string_view checkInDisc =
    "M3.52 8.98L7.06 12.52L12.64 6.02L10.96 4.58L6.94 9.28L5.08 7.42Z";
inline constexpr std::string_view quarterOne = "M8 8L8 1.8C11.42 1.8 14.2 4.58 14.2 8Z";
inline constexpr std::string_view quarterTwo =
    "M8 8L8 1.8C11.42 1.8 14.2 4.58 14.2 8C14.2 11.42 11.42 14.2 8 14.2Z";
inline constexpr std::string_view quarterThree =
    "M8 8L8 1.8C11.42 1.8 14.2 4.58 14.2 8C14.2 11.42 11.42 14.2 8 14.2C4.58 14.2 1.8 11.42 1.8 8Z";

// Traffic light in its housing.
inline constexpr std::string_view housing =
    "M0.8 3.2C0.8 1.88 1.88 0.8 3.2 0.8L12.8 0.8C14.12 0.8 15.2 1.88 15.2 3.2L15.2 12.8"
    "C15.2 14.12 14.12 15.2 12.8 15.2L3.2 15.2C1.88 15.2 0.8 14.12 0.8 12.8Z";
inline constexpr std::string_view lamp =
    "M8 2.4C11.09 2.4 13.6 4.91 13.6 8C13.6 11.09 11.09 13.6 8 13.6C4.91 13.6 2.4 11.09 2.4 8"
    "C2.4 4.91 4.91 2.4 8 2.4Z";

// Flags.
inline constexpr std::string_view flagPole =
    "M2.2 1.5C2.2 1.11 2.52 0.8 2.9 0.8L3.3 0.8C3.69 0.8 4 1.11 4 1.5L4 14.7"
    "C4 15.09 3.69 15.4 3.3 15.4L2.9 15.4C2.52 15.4 2.2 15.09 2.2 14.7Z";
inline constexpr std::string_view swallowtailRim = "M4 1.4L15 1.4L11.4 5.5L15 9.6L4 9.6Z";
inline constexpr std::string_view swallowtail = "M4.9 2.3L13.01 2.3L10.2 5.5L13.01 8.7L4.9 8.7Z";
inline constexpr std::string_view pennantRim = "M4 1.4L15 5.5L4 9.6Z";
inline constexpr std::string_view pennant = "M4.9 2.7L12.42 5.5L4.9 8.3Z";
inline constexpr std::string_view bannerRim = "M4 1.4L15 1.4L15 9.6L4 9.6Z";
inline constexpr std::string_view banner = "M4.9 2.3L14.1 2.3L14.1 8.7L4.9 8.7Z";

// Signs.
inline constexpr std::string_view diamondRim =
    "M7.29 1.11C7.68 0.72 8.32 0.72 8.71 1.11L14.89 7.29C15.28 7.68 15.28 8.32 14.89 8.71"
    "L8.71 14.89C8.32 15.28 7.68 15.28 7.29 14.89L1.11 8.71C0.72 8.32 0.72 7.68 1.11 7.29Z";
inline constexpr std::string_view diamond = "M8 1.74L14.26 8L8 14.26L1.74 8Z";
inline constexpr std::string_view triangleRim =
    "M7.43 1.95C7.74 1.37 8.26 1.37 8.57 1.95L15.03 13.85C15.34 14.43 15.06 14.9 14.4 14.9"
    "L1.6 14.9C0.94 14.9 0.66 14.43 0.97 13.85Z";
inline constexpr std::string_view triangle = "M8 3L13.92 13.9L2.08 13.9Z";
inline constexpr std::string_view bangInTriangle =
    "M6.92 5.6C6.91 5.38 7.08 5.2 7.3 5.2L8.7 5.2C8.92 5.2 9.09 5.38 9.08 5.6L8.85 9.9"
    "C8.83 10.12 8.64 10.3 8.42 10.3L7.58 10.3C7.35 10.3 7.17 10.12 7.15 9.9ZM7.05 11.3L8.95 11.3"
    "L8.95 13.2L7.05 13.2Z";

// Symbols that stand alone.
inline constexpr std::string_view crossRim =
    "M11.82 0.93C12.09 0.66 12.54 0.66 12.81 0.93L15.07 3.19C15.34 3.46 15.34 3.91 15.07 4.18"
    "L11.75 7.51C11.48 7.78 11.48 8.22 11.75 8.49L15.07 11.82C15.34 12.09 15.34 12.54 15.07 12.81"
    "L12.81 15.07C12.54 15.34 12.09 15.34 11.82 15.07L8.49 11.75C8.22 11.48 7.78 11.48 7.51 11.75"
    "L4.18 15.07C3.91 15.34 3.46 15.34 3.19 15.07L0.93 12.81C0.66 12.54 0.66 12.09 0.93 11.82"
    "L4.25 8.49C4.52 8.22 4.52 7.78 4.25 7.51L0.93 4.18C0.66 3.91 0.66 3.46 0.93 3.19L3.19 0.93"
    "C3.46 0.66 3.91 0.66 4.18 0.93L7.51 4.25C7.78 4.52 8.22 4.52 8.49 4.25Z";
inline constexpr std::string_view cross =
    "M12.31 1.71L14.29 3.69L9.98 8L14.29 12.31L12.31 14.29L8 9.98L3.69 14.29L1.71 12.31L6.02 8"
    "L1.71 3.69L3.69 1.71L8 6.02Z";
inline constexpr std::string_view bangRim =
    "M5.63 1C5.61 0.67 5.87 0.4 6.2 0.4L9.8 0.4C10.13 0.4 10.39 0.67 10.37 1L9.93 9.7"
    "C9.91 10.03 9.63 10.3 9.3 10.3L6.7 10.3C6.37 10.3 6.09 10.03 6.07 9.7ZM5.9 11.8"
    "C5.9 11.47 6.17 11.2 6.5 11.2L9.5 11.2C9.83 11.2 10.1 11.47 10.1 11.8L10.1 15"
    "C10.1 15.33 9.83 15.6 9.5 15.6L6.5 15.6C6.17 15.6 5.9 15.33 5.9 15Z";
inline constexpr std::string_view bang =
    "M6.44 1.2L9.56 1.2L9.14 9.5L6.86 9.5ZM6.7 12L9.3 12L9.3 14.8L6.7 14.8Z";
inline constexpr std::string_view checkRim =
    "M1.14 9.8C0.93 10.05 0.95 10.43 1.2 10.65L6.08 14.93C6.33 15.15 6.7 15.12 6.92 14.87"
    "L14.89 5.48C15.1 5.23 15.07 4.85 14.82 4.64L12.38 2.56C12.13 2.35 11.75 2.38 11.53 2.63"
    "L6.46 8.61C6.25 8.86 5.87 8.89 5.62 8.67L4.1 7.34C3.85 7.12 3.47 7.15 3.26 7.4Z";
inline constexpr std::string_view check =
    "M3.73 8.22L6.16 10.35L12.03 3.44L14.01 5.13L6.44 14.05L2.02 10.17Z";

// Bars of a rating, from the lowest on.
inline constexpr std::string_view barOne = "M0.8 11.2L3.95 11.2L3.95 15.2L0.8 15.2Z";
inline constexpr std::string_view barTwo = "M4.55 7.8L7.7 7.8L7.7 15.2L4.55 15.2Z";
inline constexpr std::string_view barThree = "M8.3 4.4L11.45 4.4L11.45 15.2L8.3 15.2Z";
inline constexpr std::string_view barFour = "M12.05 1L15.2 1L15.2 15.2L12.05 15.2Z";

// Stars.
inline constexpr std::string_view starRim =
    "M7.75 1.05C7.89 0.69 8.11 0.69 8.25 1.05L9.8 5.02C9.94 5.38 10.37 5.69 10.76 5.71L15 5.96"
    "C15.39 5.98 15.46 6.2 15.16 6.44L11.87 9.14C11.57 9.38 11.41 9.89 11.51 10.26L12.58 14.38"
    "C12.68 14.75 12.5 14.88 12.17 14.68L8.59 12.38C8.27 12.17 7.73 12.17 7.41 12.38L3.83 14.68"
    "C3.5 14.88 3.32 14.75 3.42 14.38L4.49 10.26C4.59 9.89 4.43 9.38 4.13 9.14L0.84 6.44"
    "C0.54 6.2 0.61 5.98 1 5.96L5.24 5.71C5.63 5.69 6.06 5.38 6.2 5.02Z";
inline constexpr std::string_view star =
    "M8 3.01L9.39 6.58L13.22 6.8L10.26 9.23L11.23 12.94L8 10.87L4.77 12.94L5.74 9.23L2.78 6.8"
    "L6.61 6.58Z";
inline constexpr std::string_view starLeft =
    "M8 3.01L6.61 6.58L2.78 6.8L5.74 9.23L4.77 12.94L8 10.87Z";

// Triangles that point up or down, and the dash between them.
inline constexpr std::string_view wedgeUpRim =
    "M7.44 2.73C7.75 2.27 8.25 2.27 8.56 2.73L15.24 12.57C15.55 13.03 15.35 13.4 14.8 13.4"
    "L1.2 13.4C0.65 13.4 0.45 13.03 0.76 12.57Z";
inline constexpr std::string_view wedgeUp = "M8 3.59L14.01 12.45L1.99 12.45Z";
inline constexpr std::string_view wedgeDownRim =
    "M0.76 3.43C0.45 2.97 0.65 2.6 1.2 2.6L14.8 2.6C15.35 2.6 15.55 2.97 15.24 3.43L8.56 13.27"
    "C8.25 13.73 7.75 13.73 7.44 13.27Z";
inline constexpr std::string_view wedgeDown = "M1.99 3.55L14.01 3.55L8 12.41Z";
inline constexpr std::string_view dashRim =
    "M0.8 6.4C0.8 5.96 1.16 5.6 1.6 5.6L14.4 5.6C14.84 5.6 15.2 5.96 15.2 6.4L15.2 9.6"
    "C15.2 10.04 14.84 10.4 14.4 10.4L1.6 10.4C1.16 10.4 0.8 10.04 0.8 9.6Z";
inline constexpr std::string_view dash = "M1.75 6.55L14.25 6.55L14.25 9.45L1.75 9.45Z";

// Boxes.
inline constexpr std::string_view boxLowLeft = "M0.8 8.4L7.6 8.4L7.6 15.2L0.8 15.2Z";
inline constexpr std::string_view boxInnerLowLeft = "M1.7 9.3L6.7 9.3L6.7 14.3L1.7 14.3Z";
inline constexpr std::string_view boxLowRight = "M8.4 8.4L15.2 8.4L15.2 15.2L8.4 15.2Z";
inline constexpr std::string_view boxInnerLowRight = "M9.3 9.3L14.3 9.3L14.3 14.3L9.3 14.3Z";
inline constexpr std::string_view boxHighLeft = "M0.8 0.8L7.6 0.8L7.6 7.6L0.8 7.6Z";
inline constexpr std::string_view boxInnerHighLeft = "M1.7 1.7L6.7 1.7L6.7 6.7L1.7 6.7Z";
inline constexpr std::string_view boxHighRight = "M8.4 0.8L15.2 0.8L15.2 7.6L8.4 7.6Z";
inline constexpr std::string_view boxInnerHighRight = "M9.3 1.7L14.3 1.7L14.3 6.7L9.3 6.7Z";

}  // namespace Zorv::Render::IconPaths
