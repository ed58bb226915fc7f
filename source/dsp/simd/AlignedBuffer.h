#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>

/** Owned doubles on a cache-line border, all 0 at the start. Its size is fixed at construction. */
class AlignedBuffer
{
public:
    explicit AlignedBuffer (int count)
        : length (std::max (count, 0)),
          values (
              static_cast<double*> (::operator new[] (static_cast<std::size_t> (length) * sizeof (double), alignment)))
    {
        clear();
    }

    [[nodiscard]] double* data() noexcept { return values.get(); }
    [[nodiscard]] const double* data() const noexcept { return values.get(); }
    [[nodiscard]] int size() const noexcept { return length; }

    /** Real-time safe. */
    void clear() noexcept { std::fill_n (values.get(), length, 0.0); }

private:
    static constexpr std::align_val_t alignment { 64 };

    struct Release
    {
        void operator() (double* allocated) const noexcept { ::operator delete[] (allocated, alignment); }
    };

    int length = 0;
    std::unique_ptr<double[], Release> values;
};
