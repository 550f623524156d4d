#pragma once

#include <list>
#include <memory>
#include <vector>

/// The elements of a list that the caller must delete.
template <class T> std::vector<T> taken(std::list<T>* list) {
    const std::unique_ptr<std::list<T>> owned(list);
    return std::vector<T>(owned->begin(), owned->end());
}
