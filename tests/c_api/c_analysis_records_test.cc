// Records of other releases in the plain C interface: smaller ones are refused, and of larger ones
// the unknown fields are left alone.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <vector>

#include "api/kestrel.h"
#include "tests/c_api/c_analysis_support.h"
#include "tests/c_api/c_request.h"

namespace kestrel::test {
namespace {

// A record of a later release: fields follow that this library does not know.
template <class Record>
struct Larger {
  Record known;
  std::array<unsigned char, 16> unknown;
};

template <class Record>
Larger<Record> larger(const Record& record) {
  Larger<Record> made{record, {}};
  made.unknown.fill(0xA5);
  made.known.structSize = sizeof made;
  return made;
}

TEST(CRecords, ASmallerRequestOrStreamIsRefused) {
  const std::vector<KestrelStream> streams(2, stream("1", 1));
  const KestrelRequest good = request("T2=Stereo", streams);
  for (const std::uint32_t size : {0U, 1U, 4U, 32U, 39U}) {
    KestrelRequest bad = good;
    bad.structSize = size;
    EXPECT_EQ(refusalOf(&bad), refusal(KESTREL_BAD_RECORD_SIZE)) << size;
  }
  for (const std::uint32_t size : {0U, 1U, 4U, 40U, 47U}) {
    std::vector<KestrelStream> badStreams = streams;
    badStreams[1].structSize = size;
    const KestrelRequest bad = request("T2=Stereo", badStreams);
    EXPECT_EQ(refusalOf(&bad), refusal(KESTREL_BAD_RECORD_SIZE)) << size;
  }
}

TEST(CRecords, AStreamThatReachesIntoTheNextOneIsRefused) {
  std::vector<KestrelStream> streams(2, stream("1", 1));
  streams[0].structSize = sizeof(KestrelStream) + 1;
  const KestrelRequest bad = request("T2=Stereo", streams);
  EXPECT_EQ(refusalOf(&bad), refusal(KESTREL_BAD_RECORD_SIZE));
}

TEST(CRecords, UnknownFieldsOfALargerRequestAreIgnored) {
  const std::vector<KestrelStream> streams = {stream("1", 2)};
  const Larger<KestrelRequest> asked = larger(request("T2=Stereo", streams));
  EXPECT_EQ(outcomeOf(analysed(asked.known)), KESTREL_FILLED);
}

TEST(CRecords, TheStrideLeadsFromOneStreamToTheNext) {
  std::vector<Larger<KestrelStream>> streams(3, larger(stream("1", 2)));
  streams[1].known.streamId = "5";
  streams[2].known.streamId = "9";
  // A record that is smaller than the stride is padded, not refused.
  streams[2].known.structSize = sizeof(KestrelStream);
  KestrelRequest asked = request("T6=Stereo,Stereo,Stereo", {});
  asked.streams = &streams[0].known;
  asked.streamCount = 3;
  asked.streamStride = sizeof streams[0];
  const Analysis analysis = analysed(asked);
  ASSERT_EQ(serviceCount(analysis), 3);
  EXPECT_EQ(serviceAt(analysis, 1).slots[0].trackNumber, 5);
  EXPECT_EQ(serviceAt(analysis, 2).slots[1].trackNumber, 9);
}

TEST(CRecords, AStrideThatCannotHoldAStreamOrMisplacesTheNextIsRefused) {
  const std::vector<KestrelStream> streams(4, stream("1", 1));
  for (const std::uint32_t stride : {0U, 1U, 8U, 40U, 47U, 49U, 50U, 52U, 60U, 0xFFFFFFFFU}) {
    KestrelRequest bad = request("T1=Mono", streams);
    bad.streamCount = 1;
    bad.streamStride = stride;
    EXPECT_EQ(refusalOf(&bad), refusal(KESTREL_BAD_RECORD_SIZE)) << stride;
  }
}

// Has records of every size filled. One that is too small must not change, and of a larger one only
// the known fields may.
template <class Record, class Get>
void expectFillsKnownFields(const Get& get) {
  for (const std::uint32_t size : {0U, 1U, 4U, static_cast<std::uint32_t>(sizeof(Record) - 1)}) {
    Larger<Record> record = larger(Record{});
    record.known.structSize = size;
    const Larger<Record> before = record;
    EXPECT_EQ(get(&record.known), KESTREL_BAD_RECORD_SIZE) << size;
    EXPECT_EQ(std::memcmp(&record, &before, sizeof record), 0) << size;
  }
  Record exact{};
  exact.structSize = sizeof exact;
  EXPECT_EQ(get(&exact), KESTREL_OK);
  Larger<Record> record = larger(Record{});
  const Larger<Record> before = record;
  EXPECT_EQ(get(&record.known), KESTREL_OK);
  EXPECT_EQ(record.known.structSize, sizeof record);
  EXPECT_EQ(record.unknown, before.unknown);
  record.known.structSize = exact.structSize;
  EXPECT_EQ(std::memcmp(&record.known, &exact, sizeof exact), 0);
}

TEST(CRecords, OfAFilledRecordOnlyKnownFieldsAreWritten) {
  const std::vector<KestrelStream> streams = {stream("1", 3)};
  const Analysis analysis = analysed(request("T3=Stereo", streams));
  expectFillsKnownFields<KestrelService>(
      [&](KestrelService* service) { return kestrelGetService(analysis.get(), 0, service); });
  expectFillsKnownFields<KestrelFinding>(
      [&](KestrelFinding* finding) { return kestrelGetFinding(analysis.get(), 0, finding); });
}

}  // namespace
}  // namespace kestrel::test
