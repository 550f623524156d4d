#pragma once

#include "placing/FieldPlaces.h"

#include <cstdint>

namespace inspect {

/// Whether a value changes as one does that has this bit of a byte: a number by a bit of its own, a text in one byte.
bool agrees(const Field& before, const Field& after, std::uint8_t byte, std::uint8_t bit);

/// Where a flag, a small number or a text may stand, by a change after which the fields are others: in a byte that has
/// its value, and whose bit changes it in the same bit.
/// @param guesses are added to, of the fields before
void guessPlaces(const Fields& before, const Fields& after, std::size_t at, std::uint8_t byte, std::uint8_t bit,
                 FieldPlaces& guesses);

/// Adds what can be told of values that no change tells of: from guesses where there is but one, from what stands there
/// of texts, and from the loops of the section of the tags of descriptors.
void deducePlaces(const std::vector<std::uint8_t>& section, const Fields& fields, FieldPlaces& places,
                  FieldPlaces& guesses);

} // namespace inspect
