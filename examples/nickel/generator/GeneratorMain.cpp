// Writes the files of the nickel sample. Usage: nickel_generator FOLDER [SEED]
#include "SampleFiles.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>

namespace
{

constexpr std::uint64_t committedSeed = 8333;

bool write(const std::filesystem::path& path, const std::string& content)
{
    std::ofstream file(path, std::ios::binary);
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
    return static_cast<bool>(file.flush());
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 2 || argc > 3) {
        std::cerr << "usage: nickel_generator FOLDER [SEED]\n";
        return EXIT_FAILURE;
    }
    const std::filesystem::path folder(argv[1]);
    const std::uint64_t seed = argc == 3 ? std::strtoull(argv[2], nullptr, 10) : committedSeed;
    for (const nickel::SampleFile& file : nickel::sampleFiles(seed)) {
        if (!write(folder / file.name, file.content)) {
            std::cerr << "nickel_generator: cannot write " << folder / file.name << '\n';
            return EXIT_FAILURE;
        }
    }
    return EXIT_SUCCESS;
}
