#include "SampleFiles.h"

#include "NickelTruth.h"
#include "PhotonCounter.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdio>
#include <functional>

namespace nickel
{
namespace
{

constexpr double crystalSpacing = 3.1355316; // lattice plane spacing of Si(111), angstrom
constexpr double hcEvAngstrom = 12398.424360387684;
constexpr double degreesPerRadian = 180.0 / 3.1415926535; // the value of pi in aelk's reader

struct Counts {
    std::int64_t incident;
    std::int64_t transmitted;

    double mut() const
    {
        return std::log(static_cast<double>(incident) / static_cast<double>(transmitted));
    }
};

Counts count(PhotonCounter& counter, double photons, double mut)
{
    const std::int64_t incident = counter.count(photons);
    return {incident, counter.count(photons * std::exp(-mut))};
}

template <typename... Values>
std::string line(const char* format, Values... values)
{
    const int length = std::snprintf(nullptr, 0, format, values...);
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    std::snprintf(text.data(), text.size(), format, values...);
    text.pop_back(); // removes the terminating null character
    return text;
}

using Scan = std::vector<Counts>;

Scan scan(PhotonCounter& counter, const std::function<double(double)>& mutAt)
{
    Scan points;
    for (const double energyEv : scanEnergies()) {
        points.push_back(count(counter, spectrumPhotons, mutAt(energyEv)));
    }
    return points;
}

std::string plainSpectrum(const char* title, const Scan& points)
{
    std::string text = line("# %s\n# energy[eV] mut\n", title);
    const std::vector<double>& energies = scanEnergies();
    for (std::size_t i = 0; i < points.size(); ++i) {
        text += line("%.1f %.6f\n", energies.at(i), points.at(i).mut());
    }
    return text;
}

std::string beamlineSpectrum(const char* title, const Scan& points)
{
    std::string text = line("9809     %s\n"
                            "Mono :   SI(111)      D=  %.7f A\n"
                            "Param file : nickel sample\n"
                            "Angle(c)  Angle(o)   time/s   I0   I\n"
                            "      Mode         0         0         1         2\n"
                            "    Offset         0         0     0.000     0.000\n",
                            title, crystalSpacing);
    const std::vector<double>& energies = scanEnergies();
    for (std::size_t i = 0; i < points.size(); ++i) {
        const double angle =
            std::asin(hcEvAngstrom / (2.0 * crystalSpacing * energies.at(i))) * degreesPerRadian;
        text += line("%12.8f %12.8f %6.2f %12lld %12lld\n", angle, angle, 1.0,
                     static_cast<long long>(points.at(i).incident),
                     static_cast<long long>(points.at(i).transmitted));
    }
    return text;
}

using CountMap = std::vector<Counts>; // row-major

CountMap countMap(PhotonCounter& counter, const Image& image, double energyEv)
{
    CountMap pixels;
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            pixels.push_back(count(counter, pixelPhotons, image.mutAt(x, y, energyEv)));
        }
    }
    return pixels;
}

std::string textMap(const Image& image, double energyEv, const CountMap& pixels)
{
    const auto width = static_cast<std::size_t>(image.width);
    std::string text = line("# Nickel sample: transmission map\n"
                            "# ENERGY : %.0f\n"
                            "# X-NUM %d\n"
                            "# Y-NUM %d\n"
                            "# columns : x[um] y[um] I I0\n",
                            energyEv, image.width, image.height);
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        const auto x = static_cast<double>(i % width);
        const auto y = static_cast<double>(i / width);
        text += line("%g %g %lld %lld\n", x * pixelSizeUm, y * pixelSizeUm,
                     static_cast<long long>(pixels.at(i).transmitted),
                     static_cast<long long>(pixels.at(i).incident));
    }
    return text;
}

void appendLittleEndian(std::string& bytes, double value)
{
    auto bits = std::bit_cast<std::uint64_t>(value);
    for (int i = 0; i < 8; ++i) {
        bytes += static_cast<char>(bits & 0xffU);
        bits >>= 8U;
    }
}

/// The absorbances of a map, rounded to six decimals. The last bit of a logarithm can differ
/// between machines; the rounding removes almost all such differences.
std::vector<double> mutValues(const CountMap& pixels)
{
    std::vector<double> values;
    for (const Counts& pixel : pixels) {
        values.push_back(std::round(pixel.mut() * 1e6) / 1e6);
    }
    return values;
}

std::string binaryHeader(double energyEv, const std::vector<double>& values)
{
    const auto [lowest, highest] = std::minmax_element(values.begin(), values.end());
    const std::string fields =
        line("WIDTH: %d\nHEIGHT: %d\nDATA_ID: Nickel sample %.0f eV\n", mapWidth, mapHeight,
             energyEv) +
        "DATA_STRUCTURE: Header of Size ( HeaderSize: ), Row Double Data Block of pixels ( WIDTH: "
        "* HEIGHT ), Row Bool Valid Flag Block of pixels ( WIDTH: * HEIGHT ) \n"
        "SIZE_OF_DOUBLE: 8\nSIZE_OF_BOOL: 1\n" +
        line("MIN_VAL: %g\nMAX_VAL: %g\nEND_OF_HEADER:\n", *lowest, *highest);
    constexpr std::size_t firstLineLength = 65;
    const std::size_t headerSize = ((firstLineLength + fields.size()) / 256 + 1) * 256;
    std::string header = line("2dData-V0.0 HeaderSize: %zu", headerSize);
    header.resize(firstLineLength - 1, ' ');
    header += '\n' + fields;
    header.resize(headerSize, '\0');
    return header;
}

std::string binaryMap(double energyEv, const CountMap& pixels)
{
    const std::vector<double> values = mutValues(pixels);
    std::string bytes = binaryHeader(energyEv, values);
    for (const double value : values) {
        appendLittleEndian(bytes, value);
    }
    bytes.append(values.size(), '\1');
    return bytes;
}

SampleFile targetFile(PhotonCounter& counter, const Target& target)
{
    const Scan points =
        scan(counter, [&target](double energyEv) { return targetMut(target, energyEv); });
    return {target.fileName, plainSpectrum(target.name, points)};
}

} // namespace

std::vector<SampleFile> sampleFiles(std::uint64_t seed)
{
    PhotonCounter counter(seed);
    std::vector<SampleFile> files;
    for (const Compound& compound : compounds()) {
        const Scan points = scan(
            counter, [&compound](double energyEv) { return referenceMut(compound, energyEv); });
        files.push_back({compound.fileName, plainSpectrum(compound.name, points)});
        if (&compound == &compounds()[niII]) {
            files.push_back({"ref_ni2_9809.dat", beamlineSpectrum(compound.name, points)});
        }
    }
    files.push_back(targetFile(counter, targetOfTwo()));
    for (const double energyEv : mapEnergiesEv) {
        const CountMap pixels = countMap(counter, imageOfTwo(), energyEv);
        files.push_back({mapFileName(energyEv), textMap(imageOfTwo(), energyEv, pixels)});
        if (energyEv == mapEnergiesEv[vPoint]) {
            files.push_back({"map_8345ev.2dp", binaryMap(energyEv, pixels)});
        }
    }
    // Files that were added to the sample later are generated last, so that the noise of
    // the earlier files does not change.
    files.push_back(targetFile(counter, targetOfFour()));
    for (const double energyEv : imageOfFour().energiesEv) {
        const CountMap pixels = countMap(counter, imageOfFour(), energyEv);
        files.push_back(
            {imageOfFour().fileName(energyEv), textMap(imageOfFour(), energyEv, pixels)});
    }
    return files;
}

} // namespace nickel
