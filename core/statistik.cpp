#include "core/statistik.h"

#include <QtGlobal>

#include <array>
#include <cstddef>

namespace statistik {

namespace {

// One source, compiled for several instruction sets; the loader picks the widest that the processor
// has. Every lane does the same IEEE operations in the same order, so all give the same bits.
#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__) &&                             \
    !defined(__SANITIZE_ADDRESS__)
#define WIDEST_VECTORS __attribute__((target_clones("avx512f", "avx2", "default")))
#define ALWAYS_INLINE __attribute__((always_inline))
#else
#define WIDEST_VECTORS
#define ALWAYS_INLINE
#endif

// Independent partial sums keep the adders busy and fill the vector registers.
constexpr std::size_t lanes = 16;

struct CompensatedSum
{
    double sum = 0.0;
    double lost = 0.0;

    // sum + lost grows by exactly value, but for the rounding of lost.
    void add(double value)
    {
        const double next = sum + value;
        const double part = next - sum;
        lost += (sum - (next - part)) + (value - part);
        sum = next;
    }
};

// Sums term(0) ... term(count - 1).
template <typename Term>
ALWAYS_INLINE inline double compensated(std::size_t count, Term term)
{
    std::array<double, lanes> sums{};
    std::array<double, lanes> losts{};
    std::size_t i = 0;
    for (; i + lanes <= count; i += lanes) {
        for (std::size_t lane = 0; lane < lanes; ++lane) {
            const double value = term(i + lane);
            const double next = sums[lane] + value;
            const double part = next - sums[lane];
            losts[lane] += (sums[lane] - (next - part)) + (value - part);
            sums[lane] = next;
        }
    }
    CompensatedSum total;
    for (; i < count; ++i)
        total.add(term(i));
    for (std::size_t lane = 0; lane < lanes; ++lane) {
        total.add(sums[lane]);
        total.add(losts[lane]);
    }
    return total.sum + total.lost;
}

} // namespace

WIDEST_VECTORS double sum(std::span<const double> x)
{
    return compensated(x.size(), [x](std::size_t i) ALWAYS_INLINE { return x[i]; });
}

WIDEST_VECTORS double sumOfSquares(std::span<const double> x, double meanX)
{
    return compensated(x.size(), [x, meanX](std::size_t i) ALWAYS_INLINE {
        const double d = x[i] - meanX;
        return d * d;
    });
}

WIDEST_VECTORS double sumOfProducts(std::span<const double> x, double meanX,
                                    std::span<const double> y, double meanY)
{
    Q_ASSERT(x.size() == y.size());
    return compensated(x.size(), [x, meanX, y, meanY](std::size_t i)
                                     ALWAYS_INLINE { return (x[i] - meanX) * (y[i] - meanY); });
}

} // namespace statistik
