#pragma once

#include "support/Classes.h"
#include "support/Parse.h"

#include <gtest/gtest.h>

#include <string>

/// The list of classes as the test framework takes it.

/// The name of a class without its namespace.
template <class T> std::string nameOf() {
    const std::string name = testing::internal::GetTypeName<T>();
    return name.substr(name.rfind(':') + 1);
}

template <class... T> struct Listed { using Types = testing::Types<T...>; };
template <class... T, class... U> Listed<T..., U...> operator+(Listed<T...>, Listed<U...>);

template <Holds HOLDS, class... Row>
auto rowsThatHold(const Rows<Row...>&)
    -> decltype((... + std::conditional_t<Row::Items::HOLDS == HOLDS, Listed<Row>, Listed<>>()));

/// Of a typed suite over rows.
struct OwnerName {
    template <class Row> static std::string GetName(int /*position*/) { return nameOf<typename Row::Class>(); }
};

/// The rows of the classes that own items so, for a typed suite.
template <Holds HOLDS> using RowsOf = typename decltype(rowsThatHold<HOLDS>(classRows()))::Types;
