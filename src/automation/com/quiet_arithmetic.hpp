// Calculating in the thread of a host that has its own idea of arithmetic.
#pragma once

#include <xmmintrin.h>

#include <cfenv>

namespace quill1xml::automation {

/// Keeps floating-point operations from ending in a trap, as long as it lives: some hosts have an overflow end the
/// program where ours becomes an error. The host's settings come back at the end.
class QuietArithmetic {
public:
    QuietArithmetic() noexcept : newerUnit_(_mm_getcsr()) {
        // The run-time library knows the older unit only.
        std::feholdexcept(&olderUnit_);
        _mm_setcsr((newerUnit_ | _MM_MASK_MASK) & ~static_cast<unsigned int>(_MM_EXCEPT_MASK));
    }
    QuietArithmetic(const QuietArithmetic&) = delete;
    QuietArithmetic& operator=(const QuietArithmetic&) = delete;
    ~QuietArithmetic() {
        // Setting the older unit costs microseconds on a virtual machine.
        if ((olderUnit_.__control_word & allMasked) != allMasked) std::fesetenv(&olderUnit_);
        _mm_setcsr(newerUnit_);
    }

private:
    static constexpr unsigned int allMasked = 0x3F;

    unsigned int newerUnit_;
    std::fenv_t olderUnit_;
};

}  // namespace quill1xml::automation
