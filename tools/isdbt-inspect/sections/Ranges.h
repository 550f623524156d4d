#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace inspect {

/// Numbers in the order in which they are added, those that follow one another as a range.
class Ranges {
public:
    struct Range {
        std::size_t first;
        std::size_t last;
    };

    /// What is the last one or follows it is in its range; anything else begins another.
    void add(std::size_t number) {
        if (!m_all.empty() && (number == m_all.back().last || number == m_all.back().last + 1)) {
            m_all.back().last = number;
        } else {
            m_all.push_back({number, number});
        }
    }

    bool has(std::size_t number) const {
        return std::any_of(m_all.begin(), m_all.end(),
                           [number](const Range& each) { return each.first <= number && number <= each.last; });
    }

    const std::vector<Range>& all() const { return m_all; }

private:
    std::vector<Range> m_all;
};

} // namespace inspect
