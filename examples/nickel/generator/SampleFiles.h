// The contents of the nickel sample's files.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace nickel
{

struct SampleFile {
    std::string name;
    std::string content;
};

/// All files of the sample, with noise from @p seed: the references, Ni(II) also in the
/// beamline format, the targets, the text maps of both images, and one of the maps also in
/// the binary format.
std::vector<SampleFile> sampleFiles(std::uint64_t seed);

} // namespace nickel
