#include <korodbc/roots/KorMemoryControllerController.h>

#include <cstdint>
#include <new>

namespace {

constexpr std::size_t noLimit = PTRDIFF_MAX;
std::size_t largestArray = noLimit;

} // namespace

void* KorMemoryControllerController::allocateArray(std::size_t bytes) noexcept
{
    if (bytes == 0 || bytes > largestArray)
        return nullptr;
    return ::operator new(bytes, std::nothrow);
}

void KorMemoryControllerController::deallocateArray(void* storage) noexcept { ::operator delete(storage); }

void KorMemoryControllerController::setLargestArray(std::size_t bytes) noexcept
{
    largestArray = bytes == 0 ? noLimit : bytes;
}
