// Writes the inputs that fuzzing starts from into a folder of corpora, those whose form is a text
// of fields: calls like those of the random tests, most of which carry their services. Seeds that
// are plain texts stand in the corpora as they were written.
//
// usage: kestrel_fuzz_seeds FOLDER
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

#include "fuzz/call_text.h"
#include "fuzz/plain_c_request.h"
#include "fuzz/r123_text.h"
#include "tests/random_inputs.h"

namespace kestrel::fuzz {
namespace {

constexpr int kCalls = 300;

void write(const std::filesystem::path& folder, int number, const std::string& seed) {
  std::filesystem::create_directories(folder);
  std::ofstream(folder / ("seed_" + std::to_string(number)), std::ios::binary) << seed;
}

// Groups of the tracks' own kinds, so that many evaluations come far.
R123Text evaluationOf(test::Random& random, const CallText& call) {
  R123Text evaluation{{wideCall(call).streams, true, {}, 41}, call.description};
  R123Configuration configuration{random.between(0, 40), {}};
  for (std::int32_t at = 0; const AudioStreamInfo& stream : evaluation.input.streams) {
    evaluation.input.streams[static_cast<std::size_t>(at)].group = at;
    const std::uint32_t type = stream.isPairCoded != 0 ? 4 : stream.channelCount == 2 ? 1 : 0;
    configuration.groups.push_back({type, static_cast<std::uint8_t>(random.below(2)), 0});
    ++at;
  }
  const std::int32_t channels = plain::countR123Channels(evaluation.input.streams, true);
  evaluation.input.configurations[channels] = configuration;
  return evaluation;
}

void writeSeeds(const std::filesystem::path& corpora) {
  test::Random random(20'260'601);
  for (int i = 0; i < kCalls; ++i) {
    const CallText call = callOf(test::randomServiceMapInput(random));
    write(corpora / "service_map", i, writeCall(call));
    PlainCInput request{{}, call};
    request.odd.capacity = random.below(200);
    request.odd.id = random.between(-1, 41);
    if (random.oneIn(6)) request.odd.recordExtra = 8 * random.between(-1, 2);
    if (random.oneIn(6)) request.odd.strideExtra = 8 * random.between(-1, 2);
    write(corpora / "plain_c", i, writePlainC(request));
    write(corpora / "layout_description", i, "r" + call.description);
    write(corpora / "layout_text", i, call.description);
    write(corpora / "ebu_r123", i, writeR123(evaluationOf(random, call)));
  }
}

}  // namespace
}  // namespace kestrel::fuzz

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: kestrel_fuzz_seeds FOLDER\n";
    return 2;
  }
  kestrel::fuzz::writeSeeds(argv[1]);
  return 0;
}
