// A deterministic stand-in for a coverage-guided fuzzer: feeds every corpus
// file, then a fixed number of byte-level mutations of them (seeded, so a
// failure reproduces), to LLVMFuzzerTestOneInput. The same targets build
// unchanged with libFuzzer when clang is available.
#include <cstdint>
#include <cstdio>
#include <dirent.h>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

std::vector<std::string> ReadCorpus(const std::string& dir) {
  std::vector<std::string> out;
  if (DIR* d = opendir(dir.c_str())) {
    while (dirent* e = readdir(d)) {
      if (e->d_name[0] == '.') continue;
      std::ifstream in(dir + "/" + e->d_name, std::ios::binary);
      std::ostringstream ss;
      ss << in.rdbuf();
      out.push_back(ss.str());
    }
    closedir(d);
  }
  if (out.empty()) out.push_back("");
  return out;
}

std::string Mutate(std::string s, std::mt19937& rng) {
  static const char* const kTokens[] = {"<", ">", "/>", "\"", "'", "=", ",", "@", "-", "[", "]", "{",
                                        "}", "|", "%", "dp", "px", "-1", "0x", "&#0;", "<window>",
                                        "</window>", "<include src='LAYOUT:x'/>", "pos=", "99999999999"};
  const int edits = 1 + static_cast<int>(rng() % 8);
  for (int i = 0; i < edits; ++i) {
    const size_t at = s.empty() ? 0 : rng() % (s.size() + 1);
    switch (rng() % 4) {
      case 0: if (!s.empty() && at < s.size()) s.erase(at, 1 + rng() % 4); break;
      case 1: s.insert(at, 1, static_cast<char>(rng() % 256)); break;
      case 2: s.insert(at, kTokens[rng() % (sizeof(kTokens) / sizeof(kTokens[0]))]); break;
      default: if (!s.empty() && at < s.size()) s[at] = static_cast<char>(rng() % 128); break;
    }
  }
  return s;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: %s CORPUS_DIR [ITERATIONS] [SEED]\n", argv[0]);
    return 2;
  }
  const std::vector<std::string> corpus = ReadCorpus(argv[1]);
  const long iterations = argc > 2 ? std::atol(argv[2]) : 2000;
  std::mt19937 rng(argc > 3 ? static_cast<unsigned>(std::atol(argv[3])) : 1234u);
  for (const std::string& input : corpus) {
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(input.data()), input.size());
  }
  for (long i = 0; i < iterations; ++i) {
    const std::string input = Mutate(corpus[rng() % corpus.size()], rng);
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(input.data()), input.size());
  }
  std::printf("%zu corpus inputs and %ld mutations ran\n", corpus.size(), iterations);
  return 0;
}
