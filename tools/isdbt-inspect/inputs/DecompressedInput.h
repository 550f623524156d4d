#pragma once

#include "inputs/Decompressor.h"
#include "inputs/ForwardedInput.h"

#include <vector>

namespace inspect {

/// Another input: what it was before it was compressed, or the input itself when it is not. Its first bytes tell.
class DecompressedInput : public ForwardedInput {
public:
    explicit DecompressedInput(std::unique_ptr<Input> input);

    bool wait(std::chrono::milliseconds patience) override {
        return available() != 0 || ForwardedInput::wait(patience);
    }
    std::size_t read(std::uint8_t* target, std::size_t room) override;

private:
    void begin();
    std::size_t available() const { return m_end - m_at; }
    std::size_t readOn(std::uint8_t* target, std::size_t room);
    std::size_t decompress(std::uint8_t* target, std::size_t room);

    std::unique_ptr<Decompressor> m_decompressor; ///< null when the input is not compressed
    std::vector<std::uint8_t> m_buffer;           ///< of the input
    std::size_t m_at = 0;
    std::size_t m_end = 0;
    bool m_begun = false;
    std::uint64_t m_taken = 0; ///< bytes of the input that are decompressed
    std::string m_failure;
};

} // namespace inspect
