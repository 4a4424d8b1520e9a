// Runs a fuzz target over stored inputs and copies of them with small random changes, for compilers
// without libFuzzer.
//
//   TARGET [--changed COUNT] FILE_OR_FOLDER...
//
// COUNT changed copies of each input. The changes follow from the input's place in the list, so
// every run is the same.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <set>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);

namespace {

using Random = std::mt19937;

void run(std::string const& input) {
  LLVMFuzzerTestOneInput(reinterpret_cast<std::uint8_t const*>(input.data()), input.size());
}

std::set<std::filesystem::path> listFiles(std::filesystem::path const& path) {
  if (!std::filesystem::is_directory(path)) {
    return {path};
  }
  return {std::filesystem::directory_iterator(path), std::filesystem::directory_iterator()};
}

std::string read(std::filesystem::path const& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) {
    std::fprintf(stderr, "%s: cannot be read\n", file.c_str());
    std::exit(2);
  }
  return {std::istreambuf_iterator<char>(stream), {}};
}

/// Replaces, removes or repeats some bytes.
void change(std::string& input, Random& random) {
  auto const at = random() % (input.size() + 1);
  auto const length = random() % 8;
  switch (random() % 3) {
    case 0:
      input.replace(at, length, 1, static_cast<char>(random()));
      break;
    case 1:
      input.erase(at, length);
      break;
    default:
      input.insert(random() % (input.size() + 1), input.substr(at, length));
  }
}

}  // namespace

int main(int argc, char** argv) {
  unsigned changedCount = 0;
  std::set<std::filesystem::path> files;
  for (int index = 1; index < argc; ++index) {
    if (std::string_view(argv[index]) == "--changed" && index + 1 < argc) {
      changedCount = static_cast<unsigned>(std::strtoul(argv[++index], nullptr, 10));
    } else {
      files.merge(listFiles(argv[index]));
    }
  }
  if (files.empty()) {
    std::fprintf(stderr, "there are no inputs\n");
    return 2;
  }
  Random random;
  for (auto const& file : files) {
    std::string const input = read(file);
    run(input);
    for (unsigned left = changedCount; left > 0; --left) {
      std::string changed = input;
      for (auto changes = 1 + random() % 4; changes > 0; --changes) {
        change(changed, random);
      }
      run(changed);
    }
  }
  return 0;
}
