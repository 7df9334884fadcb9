// The files of the nickel sample as bytes.
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

/// All files of the sample, with noise drawn from @p seed: references and
/// targets, the text maps of both images, and one map once more in the binary
/// form.
std::vector<SampleFile> sampleFiles(std::uint64_t seed);

} // namespace nickel
