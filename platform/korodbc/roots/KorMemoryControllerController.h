#pragma once

#include <cstddef>

/// Source of the storage behind arrays.
class KorMemoryControllerController {
public:
    /// Storage for `bytes` bytes, aligned for any fundamental type; nullptr when there is none to be had.
    static void* allocateArray(std::size_t bytes) noexcept;

    /// Gives storage back; nullptr is allowed.
    static void deallocateArray(void* storage) noexcept;

    /// Refuses later allocations above this many bytes each; 0 lifts the limit.
    static void setLargestArray(std::size_t bytes) noexcept;
};
