#pragma once

#include "Changer.h"
#include "Classes.h"
#include "Copied.h"
#include "Parse.h"

#include <string_view>

/// What is given to a class: the bytes of a section, of a descriptor or of an item, and how.
struct Input {
    /// Bytes of a fuzzer's input in front of those that are parsed.
    static constexpr std::size_t HEADER = 3;

    enum Flag : unsigned {
        NEWER_THAN_PREVIOUS = 0x01, ///< tables: the previous table has another version
        SAME_AS_PREVIOUS = 0x02,    ///< tables: the previous table has the same version
        SURPLUS = 0x04,             ///< bytes follow behind
        SHORT = 0x08,               ///< the last bytes are missing
        NO_OUTPUTS = 0x10,
        SWITCHED_OFF = 0x20
    };

    ByteVector wire;
    unsigned flags;
    unsigned amount; ///< how many bytes are surplus or missing

    bool has(Flag flag) const { return (flags & flag) != 0; }
};

/// A class with a parse.
struct Target {
    enum class Group { Tables, Descriptors, Items };

    std::string_view name;
    Group group;

    /// Parses, copies, reads, changes and destroys. @return whether there was an object.
    bool (*use)(const Input& input);
};

/// All of them, in the order of their names.
const std::vector<Target>& allTargets();

namespace exercising {

inline ByteVector given(const Input& input) {
    ByteVector wire = input.wire;
    if (input.has(Input::SHORT)) {
        wire.resize(wire.size() - std::min<std::size_t>(input.amount, wire.size()));
    }
    if (input.has(Input::SURPLUS) && !input.wire.empty()) {
        for (std::size_t at = 0; at < input.amount; ++at) {
            wire.push_back(input.wire[at % input.wire.size()]);
        }
    }
    return wire;
}

/// The table that was there before.
template <class T> std::unique_ptr<T> previous(const Input& input, const HeapBytes& bytes) {
    constexpr QUOR_U32 VERSION_AT = 5;
    if (!IS_TABLE<T> || !(input.has(Input::NEWER_THAN_PREVIOUS) || input.has(Input::SAME_AS_PREVIOUS))) {
        return nullptr;
    }
    ByteVector wire(bytes.data(), bytes.data() + bytes.size());
    if (input.has(Input::NEWER_THAN_PREVIOUS) && wire.size() > VERSION_AT) {
        wire[VERSION_AT] ^= 0x02;
    }
    return std::unique_ptr<T>(parsed<T>(HeapBytes(wire), bytes.size()));
}

template <class T> bool use(const Input& input) {
    const ByteVector wire = given(input);
    const HeapBytes bytes = bufferFor<T>(wire);
    const std::unique_ptr<T> before = previous<T>(input, bytes);
    std::unique_ptr<T> object(
        parsed<T>(bytes, static_cast<QUOR_U32>(wire.size()),
                  {!input.has(Input::NO_OUTPUTS), input.has(Input::SWITCHED_OFF) ? 0 : 1, before.get()}));
    if (object == nullptr) {
        return false;
    }
    Copied copied;
    asItIs(*object, [&](auto& each) {
        Reader reader(&copied);
        read(reader, each);
        copy(copied, each);
        Changer changer(reader, bytes);
        change(changer, each);
        Reader again;
        read(again, each);
    });
    object.reset();
    copied.readAll();
    return true;
}

} // namespace exercising

template <class T> Target target(std::string_view name) {
    const auto group = IS_TABLE<T>                                    ? Target::Group::Tables
                       : std::is_base_of_v<Quor::TISDBTDescriptor, T> ? Target::Group::Descriptors
                                                                      : Target::Group::Items;
    return {name, group, exercising::use<T>};
}

/// Those of a group.
std::vector<Target> targetsOf(Target::Group group);
