// Feeds a fuzz target with random mutations of its corpus: PROGRAM SEED COUNT. Equal seeds make equal inputs.
// An input that makes the target fail is left in the file "failing_input" in the working directory. PROGRAM
// FILE… runs the target on files.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/common_interface_defs.h>
#endif

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using TInput = std::string;

constexpr std::size_t kMaxSize = 1 << 14;

const TInput* runningInput = nullptr;

void SaveRunningInput() {
    if (!runningInput) return;
    std::ofstream("failing_input", std::ios::binary) << *runningInput;
    std::fprintf(stderr, "The input is in the file failing_input.\n");
}

[[noreturn]] void OnUncaught() {
    SaveRunningInput();
    std::abort();
}

void RunTarget(const TInput& input) {
    runningInput = &input;
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
    runningInput = nullptr;
}

TInput ReadFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<TInput> ReadCorpus() {
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(LUMOPLOT_CORPUS))
        paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    std::vector<TInput> corpus;
    for (const auto& path : paths) corpus.push_back(ReadFile(path));
    return corpus;
}

class TMutator {
public:
    TMutator(const std::vector<TInput>& corpus, std::uint64_t seed) : m_corpus(corpus), m_random(seed) {}

    TInput Make() {
        TInput input = Pick();
        for (std::size_t changes = 1 + Below(6); changes > 0; --changes) Change(input);
        if (input.size() > kMaxSize) input.resize(kMaxSize);
        return input;
    }

private:
    std::size_t Below(std::size_t limit) { return limit == 0 ? 0 : m_random() % limit; }
    const TInput& Pick() { return m_corpus[Below(m_corpus.size())]; }
    char Byte() { return static_cast<char>(Below(256)); }

    /// A part of some corpus file, often a short one.
    TInput Fragment() {
        const TInput& other = Pick();
        const std::size_t start = Below(other.size() + 1);
        return other.substr(start, 1 + Below(Below(4) ? 8 : 64));
    }

    void Change(TInput& input) {
        const std::size_t at = Below(input.size() + 1);
        const std::size_t length = 1 + Below(Below(4) ? 4 : 40);
        switch (Below(8)) {
        case 0: input.insert(at, 1, Byte()); break;
        case 1: input.erase(at, length); break;
        case 2: input.insert(at, Fragment()); break;
        case 3: input.replace(at, length, Fragment()); break;
        case 4: input.insert(Below(input.size() + 1), input.substr(at, length)); break;
        case 5:
            if (at < input.size()) input[at] = static_cast<char>(input[at] ^ (1 << Below(8)));
            break;
        case 6:
            if (at < input.size()) input.insert(at, Below(64), input[at]);
            break;
        default:
            if (at < input.size()) input[at] = Byte();
        }
    }

    const std::vector<TInput>& m_corpus;
    std::mt19937_64 m_random;
};

int Usage(const char* program) {
    std::fprintf(stderr, "usage: %s SEED COUNT\n       %s FILE...\n", program, program);
    return 2;
}

int Mutate(std::uint64_t seed, std::uint64_t count) {
    const std::vector<TInput> corpus = ReadCorpus();
    if (corpus.empty()) {
        std::fprintf(stderr, "no corpus in %s\n", LUMOPLOT_CORPUS);
        return 1;
    }
    for (const TInput& input : corpus) RunTarget(input);
    // A generator is expensive to seed, so one makes a batch of inputs.
    constexpr std::uint64_t kBatch = 256;
    for (std::uint64_t i = 0; i < count; i += kBatch) {
        TMutator mutator(corpus, seed * 0x9E3779B97F4A7C15U + i);
        for (std::uint64_t k = i; k < std::min(i + kBatch, count); ++k) RunTarget(mutator.Make());
    }
    std::printf("%llu inputs, none failed\n", static_cast<unsigned long long>(count));
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    std::set_terminate(&OnUncaught);
#if defined(__SANITIZE_ADDRESS__)
    __sanitizer_set_death_callback(&SaveRunningInput);
#endif
    if (argc < 2) return Usage(argv[0]);
    if (!std::filesystem::exists(argv[1])) {
        if (argc != 3) return Usage(argv[0]);
        return Mutate(std::strtoull(argv[1], nullptr, 10), std::strtoull(argv[2], nullptr, 10));
    }
    for (int i = 1; i < argc; ++i) RunTarget(ReadFile(argv[i]));
    return 0;
}
