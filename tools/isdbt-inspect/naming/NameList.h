#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace inspect {

/// What the numbers from one to another stand for.
struct Name {
    std::uint32_t first;
    std::uint32_t last;
    std::string_view text;
};

/// The names of the numbers of one kind, in ascending order.
class NameList {
public:
    /// @param rows which must outlive this
    template <std::size_t N> constexpr explicit NameList(const Name (&rows)[N]) : m_begin(rows), m_end(rows + N) {}

    /// Empty for a number without a name.
    std::string_view of(std::int64_t number) const;

    const Name* begin() const { return m_begin; }
    const Name* end() const { return m_end; }

private:
    const Name* m_begin;
    const Name* m_end;
};

/// The name without what stands in parentheses behind it: "EIT p/f".
std::string_view abbreviation(std::string_view name);

} // namespace inspect
