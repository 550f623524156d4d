#pragma once

#include "CarouselMessages.h"
#include "dsmcc/Carousels.h"
#include "support/Bytes.h"

#include <gtest/gtest.h>

inline ByteVector bytesOf(dsmcc::ByteView view) {
    return {view.begin(), view.end()};
}

/// Carousels to which sections are given, a second apart, each on a heap copy of exactly its bytes.
class Given {
public:
    explicit Given(const dsmcc::Limits& limits = {}) : m_carousels(limits) {}

    /// Sections of which some may be refused.
    void take(const std::vector<ByteVector>& sections) {
        for (const ByteVector& each : sections) {
            takeAt(m_seconds++, each);
        }
    }

    std::optional<dsmcc::Refusal> takeAt(double seconds, const ByteVector& section) {
        const HeapBytes bytes(section);
        return m_carousels.take({bytes.data(), bytes.size()}, seconds);
    }

    /// Of a section that is refused.
    dsmcc::Refusal refusalOf(const ByteVector& section) {
        const auto refusal = takeAt(m_seconds++, section);
        EXPECT_TRUE(refusal);
        return refusal.value_or(dsmcc::Refusal{});
    }

    std::vector<dsmcc::Carousel> carousels() const { return m_carousels.carousels(); }

    std::size_t memory() const { return m_carousels.memory(); }

    dsmcc::Tree tree(const dsmcc::Carousel& carousel) const { return m_carousels.tree(carousel); }

    /// Of the first carousel.
    dsmcc::Tree tree() const { return m_carousels.tree(m_carousels.carousels().at(0)); }

    /// An announced module of the first carousel.
    const dsmcc::Module& module(std::uint16_t id) const {
        const auto all = carousels();
        for (const dsmcc::Group& group : all.at(0).groups) {
            for (const dsmcc::Module* each : group.modules) {
                if (each->id == id) {
                    return *each;
                }
            }
        }
        throw std::out_of_range("module " + std::to_string(id));
    }

    ByteVector content(std::uint16_t id) const { return bytesOf(module(id).content()); }

private:
    dsmcc::Carousels m_carousels;
    double m_seconds = 0;
};
