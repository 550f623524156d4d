#pragma once

#include "multiplex/Tables.h"

#include <optional>
#include <string>
#include <vector>

namespace inspect {

/// How much of a multiplex is shown.
enum class Extent {
    Brief,    ///< what tells its parts from each other, where there are many of them
    Overview, ///< what a person wants to know at once
    Full      ///< all that the tables say
};

/// A value in the line of a node.
struct Fact {
    std::string label; ///< empty when the value speaks for itself
    Field value;
    Extent extent = Extent::Brief; ///< the least that has it
};

/// What a table says of a node beside its line.
struct Detail {
    std::string table; ///< empty when all details of the node come from one
    Field field;
};

/// How parts of a large multiplex stand in the line of what they belong to.
enum class Joining {
    ByKind, ///< each under its kind
    ByCount ///< components are but counted
};

/// A part of the multiplex.
struct Node {
    explicit Node(std::string name = {}) : title(std::move(name)) {}

    std::string title; ///< "Service 0xE6A0 (59040)"
    std::string kind;  ///< "H.264 video"; empty for what does not stand in one line with others
    std::string mark;  ///< what tells it from others of its kind: "0x0111"
    bool isComponent = false;
    std::vector<Field> names; ///< what it is called
    std::vector<Fact> facts;
    std::vector<std::string> faults; ///< what is missing of it, and where tables contradict each other
    std::vector<Detail> details;
    std::vector<Node> children;

    /// Adds a value, if there is one, to its line.
    /// @param label empty for the name of the value, if it needs one
    void say(std::string_view label, std::optional<Field> value, Extent extent = Extent::Brief);

    /// Adds some words to its line.
    void say(std::string_view words, Extent extent = Extent::Brief);

    /// Says "NIT PID 0x0010 version 0" on its line.
    void sayVersion(const Table& table, Extent extent = Extent::Full);

    /// The same without name and PID, where those are known.
    void sayVersionOnly(const Table& table);

    /// Adds, in full, the descriptors among these fields to its details, those that the library left out one by one.
    void tell(std::string_view table, Fields fields);

    /// Puts what belongs to it, each of a kind and without a fault, in its line, and what belongs to that below it.
    void join(Joining joining);
};

} // namespace inspect
