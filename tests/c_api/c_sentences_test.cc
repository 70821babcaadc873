// The sentences of findings, word for word: one for each code, and what stands in them.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "api/kestrel.h"
#include "tests/c_api/c_diagnosis_support.h"
#include "tests/c_api/c_request.h"

namespace kestrel::test {
namespace {

KestrelStream withFlag(KestrelStream made, std::uint8_t isPairCoded) {
  made.isPairCoded = isPairCoded;
  return made;
}

TEST(Sentences, TellWhatStandsInTheWay) {
  const struct {
    const char* description;
    Streams streams;
    const char* sentence;
  } rows[] = {
      {"T2=Stereo", {}, "The file has no audio streams."},
      {"T4=Mono,Mono,Stereo",
       {stream("7", 2), pairCoded("12", 2)},
       "Track 1 of service 3 (Stereo) must be an ordinary track, but track 12 (stream 2) is "
       "pair-coded."},
      {"T3=Mono,EMCA",
       {stream("7", 1), stream("9", 2)},
       "Track 1 of service 2 (EMCA) must be pair-coded, but track 9 (stream 2) is an ordinary "
       "track."},
      {"T4=Mono,5.1 Mix",
       {stream("7", 4)},
       "The file runs out of tracks at track 4 of service 2 (5.1 Mix): it needs 6 and gets 3."},
      {"T3=Mono,Stereo",
       {stream("7", 2), withKeys(stream("9", 1), 5, 0, 0)},
       "Track 2 of service 2 (Stereo), track 9 (stream 2), differs from its neighbour in format "
       "key 1: 0 there, 5 here."},
      {"T3=Mono,Stereo",
       {withKeys(stream("7", 2), 0, -8, 0), stream("9", 1)},
       "Track 2 of service 2 (Stereo), track 9 (stream 2), differs from its neighbour in format "
       "key 2: -8 there, 0 here."},
      {"T3=Mono,Stereo",
       {stream("7", 2), withKeys(stream("9", 1), 0, 0, 5)},
       "Track 2 of service 2 (Stereo), track 9 (stream 2), differs from its neighbour in format "
       "key 3: 0 there, 5 here."},
  };
  for (const auto& row : rows)
    EXPECT_EQ(Diagnosis(row.description, row.streams).sentence(0), row.sentence);
}

TEST(Sentences, TellWhatIsOdd) {
  const struct {
    const char* description;
    Streams streams;
    const char* sentence;
  } rows[] = {
      {"x T2=Stereo,-Dolby E",
       {stream("7", 2)},
       "Element \"-Dolby E\" at character 13 of the layout description names no known service, so "
       "service 2 (Dolby E) takes no tracks."},
      {"T3=Stereo,,Mono",
       {stream("7", 3)},
       "The element at character 11 of the layout description is empty, so service 2 takes no "
       "tracks."},
      {"T9=Stereo",
       {stream("7", 2), stream("9", 7)},
       "The services take 2 of the file's 9 tracks; track 9 (stream 2) is the first that is left "
       "over."},
      {"T7=Mono,5.1 Mix",
       {stream("7", 1), stream("9", 6, "L R C LFE Ls")},
       "Track 6 of service 2 (5.1 Mix), track 9 (stream 2), has no label."},
      {"T7=Mono,5.1 Mix",
       {stream("7", 1), stream("9", 6, "L R X LFE Ls Rs")},
       "The label of track 3 of service 2 (5.1 Mix), track 9 (stream 2), is none of L, R, C, LFE, "
       "Ls and Rs."},
      {"T7=Mono,5.1 Mix",
       {stream("7", 1), stream("9", 6, "L R R LFE Ls Rs")},
       "Track 3 of service 2 (5.1 Mix), track 9 (stream 2), has the same label as its track 2."},
      {"T7=Mono,5.1 Mix",
       {stream("7", 1), stream("9", 6, "L R LFE C Ls Rs")},
       "The labels of service 2 (5.1 Mix) are complete, but from its track 3, track 9 (stream 2), "
       "on they are not in the surround channel order."},
      {"T3=Mono,EMCA",
       {stream("7", 1), pairCoded("9", 40)},
       "A pair-coded run of service 2 (EMCA) that begins at track 9 (stream 2) has 40 tracks, of "
       "which the first 32 are reported."},
      {"T4=EMCA,EMCA",
       {pairCoded("7", 2), withFlag(pairCoded("9", 2), 2)},
       "No track is left where service 2 (EMCA) should stand: the services before it took more "
       "than they occupy."},
  };
  for (const auto& row : rows)
    EXPECT_EQ(Diagnosis(row.description, row.streams).sentence(0), row.sentence);
}

std::string noEntry(const std::string& total, const std::string& totals) {
  return "The layout description has no entry for " + total + " tracks; it has entries for " +
         totals + ".";
}

TEST(Sentences, ListTheTotalsOfTheDescription) {
  const struct {
    const char* description;
    const char* totals;
  } rows[] = {
      {"", "no other total"},
      {"T2=Stereo", "2"},
      {"T2=Stereo;T4=Mono", "2 and 4"},
      {"T2=Stereo;T4=Mono;T8=7.1 Mix", "2, 4 and 8"},
      {"T99=Mono;T8=7.1 Mix;T0=Mono;T01=Mono", "99, 8, 0 and 1"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(Diagnosis(row.description, {stream("1", 7)}).sentence(0), noEntry("7", row.totals));
}

TEST(Sentences, NameATotalOnceHoweverManyEntriesItHas) {
  const Diagnosis diagnosis("T2=Stereo;T4=Mono;T2=Mono,Mono;T02=EMCA", {stream("1", 7)});
  EXPECT_EQ(diagnosis.sentence(0), noEntry("7", "2 and 4"));
  EXPECT_EQ(diagnosis.describedTotals(), (std::vector<std::int32_t>{2, 4}));
}

TEST(Sentences, ShortenLongElements) {
  const std::string forty(40, 'x');
  for (const std::string more : {"", "y", "yyyyyyyyyy"}) {
    const std::string description = "T2=Stereo," + forty + more;
    const std::string shown = forty + (more.empty() ? "" : "...");
    EXPECT_EQ(Diagnosis(description.c_str(), {stream("1", 2)}).sentence(0),
              "Element \"" + shown +
                  "\" at character 11 of the layout description names no known service, so service "
                  "2 (" +
                  shown + ") takes no tracks.");
  }
}

}  // namespace
}  // namespace kestrel::test
