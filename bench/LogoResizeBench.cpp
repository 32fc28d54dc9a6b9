// The logo's bilinear resampling of a 4000 x 3000 photo-like picture to the
// logo width of 1960 pixels with a proportional height, side by side with
// Qt's own smooth scaling of the same picture, both in wall time (Qt scales
// on several threads):  build-release/bench/bench_logo_resize
#include "logo/model/BilinearResize.h"

#include <QImage>
#include <QRgb>
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>

using namespace quenby;

namespace {

constexpr int SourceWidth = 4000;
constexpr int SourceHeight = 3000;
constexpr int LogoWidth = 1960;
constexpr int LogoHeight = LogoWidth * SourceHeight / SourceWidth; // 1470

// Smooth gradients and shapes with a little grain, as a photograph has; the
// same picture on every run.
const QImage& photo()
{
    static const QImage image = [] {
        QImage img(SourceWidth, SourceHeight, QImage::Format_RGB32);
        std::uint32_t noise = 12345;
        for (int y = 0; y < SourceHeight; ++y) {
            auto* line = reinterpret_cast<QRgb*>(img.scanLine(y));
            for (int x = 0; x < SourceWidth; ++x) {
                noise = noise * 1664525u + 1013904223u;
                const int grain = static_cast<int>(noise >> 28) - 8;
                const double wave = std::sin(x * 0.004) * std::cos(y * 0.003);
                const int r = 128 + static_cast<int>(100 * wave) + grain;
                const int g = x * 200 / SourceWidth + grain;
                const int b = y * 220 / SourceHeight + (((x / 250) + (y / 250)) % 2) * 30;
                line[x] = qRgb(qBound(0, r, 255), qBound(0, g, 255), qBound(0, b, 255));
            }
        }
        return img;
    }();
    return image;
}

void logoResizeBilinear(benchmark::State& state)
{
    const QImage& src = photo();
    for (auto _ : state) {
        QImage dst = ResizeImageBilinear(src, LogoWidth, LogoHeight);
        benchmark::DoNotOptimize(dst.constBits());
    }
    state.SetItemsProcessed(state.iterations() * LogoWidth * LogoHeight);
}

void qtSmoothScaled(benchmark::State& state)
{
    const QImage& src = photo();
    for (auto _ : state) {
        QImage dst =
            src.scaled(LogoWidth, LogoHeight, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        benchmark::DoNotOptimize(dst.constBits());
    }
    state.SetItemsProcessed(state.iterations() * LogoWidth * LogoHeight);
}

} // namespace

BENCHMARK(logoResizeBilinear)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(qtSmoothScaled)->Unit(benchmark::kMillisecond)->UseRealTime();

BENCHMARK_MAIN();
