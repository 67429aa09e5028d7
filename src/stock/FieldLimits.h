#pragma once

namespace tarvex {

/// The longest text each of an animal's list fields holds; a longer one is cut when saved,
/// and typing stops there with the bell.
namespace FieldLimits {
inline constexpr int Breed = 30;
inline constexpr int Colour = 30;
inline constexpr int Status = 30;
inline constexpr int Breeder = 35;
} // namespace FieldLimits

} // namespace tarvex
