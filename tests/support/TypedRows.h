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

template <class Rows, Holds HOLDS> struct RowsWith;
template <class... Row, Holds HOLDS> struct RowsWith<std::tuple<Row...>, HOLDS> {
    template <class... T> static testing::Types<T...> types(std::tuple<T...>);
    using Types = decltype(types(std::tuple_cat(
        std::declval<std::conditional_t<Row::Items::HOLDS == HOLDS, std::tuple<Row>, std::tuple<>>>()...)));
};

/// Of a typed suite over rows.
struct OwnerName {
    template <class Row> static std::string GetName(int /*position*/) { return nameOf<typename Row::Class>(); }
};

/// The rows of the classes that own items so, for a typed suite.
template <Holds HOLDS> using RowsOf = typename RowsWith<decltype(classRows()), HOLDS>::Types;
