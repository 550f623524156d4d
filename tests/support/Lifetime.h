#pragma once

#include <utility>

/// An object that counts its destructions, to show who deletes what and when.
template <class Base> class Counted : public Base {
public:
    template <class... Arguments>
    explicit Counted(int& deleted, Arguments&&... arguments)
        : Base(std::forward<Arguments>(arguments)...), m_deleted(deleted) {}
    ~Counted() override { ++m_deleted; }

    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;

private:
    int& m_deleted;
};
