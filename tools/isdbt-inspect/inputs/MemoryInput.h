#pragma once

#include "packets/Input.h"

#include <algorithm>

namespace inspect {

/// Bytes that are there already.
class MemoryInput : public Input {
public:
    MemoryInput(std::string name, std::vector<std::uint8_t> bytes)
        : m_name(std::move(name)), m_bytes(std::move(bytes)) {}

    const std::string& name() const override { return m_name; }

    std::size_t read(std::uint8_t* target, std::size_t room) override {
        const std::size_t count = std::min(room, m_bytes.size() - m_at);
        std::copy_n(m_bytes.data() + m_at, count, target);
        m_at += count;
        return count;
    }

private:
    std::string m_name;
    std::vector<std::uint8_t> m_bytes;
    std::size_t m_at = 0;
};

} // namespace inspect
