#pragma once

#include "QuorDefs.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <list>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

class Copied;

/// Takes what the getters of one object give, and reads every byte of it and every object in it.
class Reader {
public:
    /// @param copied gets a copy of every object in it; null for none.
    explicit Reader(Copied* copied = nullptr) : m_copied(copied) {}

    template <class Value> void take(const Value& value) {
        if constexpr (std::is_same_v<Value, const char*>) {
            take(std::string(value));
        } else if constexpr (std::is_pointer_v<Value>) {
            takePointer(value);
        } else {
            m_number = static_cast<std::uint64_t>(value);
            touch(m_number);
        }
    }

    void take(const std::string& text) {
        for (const char character : text) {
            touch(static_cast<unsigned char>(character));
        }
    }

    template <class Key> void take(std::list<Key>& keys) { takePointer(&keys); }

    /// Reads an array. @return it.
    template <class Number> Number* array(Number* numbers, std::uint64_t count) {
        for (std::uint64_t at = 0; numbers != nullptr && at < count; ++at) {
            touch(numbers[at]);
        }
        return numbers;
    }

    /// Calls with every key that was taken, and with some positions, the last one possible among them.
    template <class First, class... Rest, class Use> void each(Use use) {
        for (const First& first : values<First>()) {
            if constexpr (sizeof...(Rest) == 0) {
                use(first);
            } else {
                each<Rest...>([&](const auto&... rest) { use(first, rest...); });
            }
        }
    }

    /// Calls with and without inheritance.
    template <class Use> static void inherited(Use use) {
        int from = 0;
        use(0, nullptr);
        use(1, &from);
    }

private:
    void takeKey(const std::string& key) {
        take(key);
        m_texts.push_back(key);
    }
    void takeKey(std::uint64_t key) { m_numbers.push_back(key); }
    template <class Object> void takeKey(const Object* object) { touch(object != nullptr); }

    template <class Key> void takePointer(std::list<Key>* keys) {
        const std::unique_ptr<std::list<Key>> owned(keys);
        for (const Key& key : *owned) {
            takeKey(key);
        }
    }

    /// An array as long as the number that was taken before it, or an object.
    template <class Value> void takePointer(Value* value) {
        if constexpr (std::is_arithmetic_v<Value>) {
            array(value, m_number);
        } else if (value != nullptr) {
            takeObject(*value);
        }
    }

    template <class Object> void takeObject(Object& object);

    template <class Value> std::vector<Value> values() const {
        if constexpr (std::is_same_v<Value, std::string>) {
            std::vector<std::string> texts = m_texts;
            texts.emplace_back();
            return texts;
        } else {
            std::vector<Value> numbers{0, 1, 2, 3, 4, std::numeric_limits<Value>::max()};
            for (const std::uint64_t number : m_numbers) {
                numbers.push_back(static_cast<Value>(number));
            }
            return numbers;
        }
    }

    /// Makes the compiler believe that the value matters.
    void touch(std::uint64_t value) { m_sum = m_sum + value; }

    Copied* m_copied;
    std::uint64_t m_number = 0; ///< the last one taken
    std::vector<std::uint64_t> m_numbers;
    std::vector<std::string> m_texts;
    volatile std::uint64_t m_sum = 0;
};
