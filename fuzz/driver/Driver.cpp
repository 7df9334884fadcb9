// Runs a fuzz target on a corpus and on mutations of it, or on one file, without libFuzzer.
//
// A child process runs a corpus and its mutations. If the child ends early (after a failed
// check, a sanitizer's report, lack of memory or at the time limit), the parent process reports
// the input that the child was running.
#include "driver/Mutator.h"

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace
{

namespace fs = std::filesystem;
using fuzz::Input;

constexpr unsigned timeoutSeconds = 20; // per input; builds with sanitizers are slow
constexpr std::size_t maxCorpusBytes = std::size_t{1} << 20;

/// The progress of the child process, in memory shared with the parent.
struct Progress {
    char name[256];   ///< name of the current input; empty between inputs
    std::size_t size; ///< size of the current input, at most maxCorpusBytes
    char bytes[maxCorpusBytes];
};

struct Task {
    std::string target;
    fs::path corpus;
    std::uint32_t mutations = 0;
    std::uint32_t seed = 1;
};

std::string read(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<fs::path> filesOf(const fs::path& folder)
{
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (entry.is_regular_file()) {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

/// Runs inputs one by one and collects the numbers for the summary.
class Trial
{
public:
    explicit Trial(Progress& progress)
        : m_progress(progress)
    {
    }

    void tryInput(const std::string& name, const Input& input)
    {
        m_progress.size = std::min(input.size(), maxCorpusBytes);
        std::copy_n(input.data(), m_progress.size, m_progress.bytes);
        std::snprintf(m_progress.name, sizeof m_progress.name, "%s", name.c_str());
        alarm(timeoutSeconds);
        const auto begin = Clock::now();
        // A copy in a block of exactly the input's size, so that a sanitizer detects
        // reads past the end.
        const std::vector<std::uint8_t> bytes(input.begin(), input.end());
        LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
        const std::chrono::duration<double> taken = Clock::now() - begin;
        alarm(0);
        m_progress.name[0] = '\0';
        ++m_count;
        if (taken.count() > m_slowest) {
            m_slowest = taken.count();
            m_slowestName = name;
        }
    }

    void printSummary(const Task& task) const
    {
        const std::chrono::duration<double> all = Clock::now() - m_begin;
        std::printf("%s: %zu inputs in %.2f s, seed %u; the slowest took %.1f ms: %s\n",
                    task.target.c_str(), m_count, all.count(), task.seed, 1000.0 * m_slowest,
                    m_slowestName.c_str());
    }

private:
    using Clock = std::chrono::steady_clock;

    Progress& m_progress;
    Clock::time_point m_begin = Clock::now();
    std::size_t m_count = 0;
    double m_slowest = 0.0;
    std::string m_slowestName = "none";
};

void tryAll(const Task& task, Progress& progress)
{
    Trial trial(progress);
    std::vector<Input> corpus;
    for (const fs::path& path : filesOf(task.corpus)) {
        corpus.push_back(read(path));
        trial.tryInput(path.filename().string(), corpus.back());
    }
    trial.tryInput("the empty input", {});
    if (corpus.empty()) {
        corpus.emplace_back();
    }
    fs::path dictionary = task.corpus;
    dictionary += ".dict";
    fuzz::Mutator mutator(corpus, fuzz::wordsOfDictionary(read(dictionary)), task.seed);
    for (std::uint32_t number = 1; number <= task.mutations; ++number) {
        trial.tryInput("mutation " + std::to_string(number), mutator.mutation(number));
    }
    trial.printSummary(task);
}

/// Writes the failed input to a file, so that it can be run again. Returns the path or,
/// if the file cannot be written, a text that says so.
std::string saveFailedInput(const Task& task, const Progress& progress)
{
    const char* const folder = std::getenv("TMPDIR");
    std::string name = progress.name;
    std::replace(name.begin(), name.end(), ' ', '-');
    const fs::path path = fs::path(folder != nullptr && *folder != '\0' ? folder : "/tmp") /
                          (task.target + "-seed-" + std::to_string(task.seed) + "-" + name);
    std::ofstream file(path, std::ios::binary);
    file.write(progress.bytes, static_cast<std::streamsize>(progress.size));
    return file.flush() ? path.string() : "(it could not be written to " + path.string() + ")";
}

void report(const Task& task, const Progress& progress, int status)
{
    if (progress.name[0] == '\0') {
        // No input was running, for example because LeakSanitizer reported a leak at the
        // exit of the process.
        std::fprintf(stderr, "%s: failed after its inputs, seed %u\n", task.target.c_str(),
                     task.seed);
        return;
    }
    const bool isTooSlow = WIFSIGNALED(status) && WTERMSIG(status) == SIGALRM;
    std::fprintf(stderr, "%s: %s, seed %u: %s\nThe input: %s\nTo try it again: %s FILE\n",
                 task.target.c_str(), isTooSlow ? "took too long" : "failed", task.seed,
                 progress.name, saveFailedInput(task, progress).c_str(), task.target.c_str());
}

/// Runs all inputs of a task in a child process.
/// @return the exit status of the parent
int runTask(const Task& task)
{
    void* const shared =
        mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    const pid_t child = shared == MAP_FAILED ? -1 : fork();
    if (child < 0) {
        std::perror(task.target.c_str());
        return EXIT_FAILURE;
    }
    auto& progress = *static_cast<Progress*>(shared);
    if (child == 0) {
        tryAll(task, progress);
        std::exit(EXIT_SUCCESS);
    }
    int status = 0;
    waitpid(child, &status, 0);
    if (WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS) {
        return EXIT_SUCCESS;
    }
    report(task, progress, status);
    return EXIT_FAILURE;
}

int tryFile(const fs::path& path)
{
    const std::string text = read(path);
    const std::vector<std::uint8_t> bytes(text.begin(), text.end());
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
    std::printf("%s: %zu bytes, nothing found\n", path.c_str(), bytes.size());
    return EXIT_SUCCESS;
}

std::optional<std::uint32_t> numberOf(const char* text)
{
    char* end = nullptr;
    const unsigned long number = std::strtoul(text, &end, 10);
    return *text == '\0' || *end != '\0' ? std::nullopt
                                         : std::optional(static_cast<std::uint32_t>(number));
}

int usage(const std::string& target)
{
    std::fprintf(stderr,
                 "%s CORPUS-FOLDER MUTATIONS [SEED]   tries the files and mutations of them\n"
                 "%s FILE                             tries one input\n",
                 target.c_str(), target.c_str());
    return 2;
}

} // namespace

int main(int argc, char** argv)
{
    Task task;
    task.target = fs::path(argv[0]).filename().string();
    if (argc == 2 && fs::is_regular_file(argv[1])) {
        return tryFile(argv[1]);
    }
    const auto mutations = argc > 2 ? numberOf(argv[2]) : std::nullopt;
    const auto seed = argc > 3 ? numberOf(argv[3]) : std::optional<std::uint32_t>(1);
    if (argc > 4 || !mutations || !seed || !fs::is_directory(argv[1])) {
        return usage(task.target);
    }
    task.corpus = argv[1];
    task.mutations = *mutations;
    task.seed = *seed;
    return runTask(task);
}
