#include "host/judging/identification.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "host/evidence/track_map.h"
#include "tests/host/support/synthetic_media.h"

namespace kestrel::host {
namespace {

std::vector<Candidate> identified(const RawMedia& media) {
  return inspectMedia(media).judgement.identification;
}

std::string best(const RawMedia& media) {
  const std::vector<Candidate> candidates = identified(media);
  return candidates.empty() ? "none" : bestInWords(candidates);
}

bool hasReason(const Candidate& candidate, const std::string& id) {
  return std::ranges::find(candidate.reasons, id, &Reason::id) != candidate.reasons.end();
}

TEST(IdentificationTest, labelsTellTheLayout) {
  const struct {
    const char* labels;
    const char* item;
  } rows[] = {
      {"L R C LFE Ls Rs L R", "\"5.1 Mix + Stereo Downmix\""},
      {"L R L R C LFE Ls Rs", "\"Stereo + 5.1 Mix\""},
      {"L R C LFE Ls Rs Lt Rt", "\"5.1 Mix + Stereo Downmix\""},
      {"L C R Ls Rs LFE L R", "\"5.1 Mix + Stereo Downmix\""},
      {"L R L R L R L R", "\"4 Stereo\""},
      {"L R C LFE Ls Rs", "\"5.1 Mix\""},
      {"L R L R L R", "\"3 Stereo\""},
      {"L R", "\"Stereo\""},
      {"M1 M2", "\"2 Mono\""},
      {"L R C LFE Ls Rs Lrs Rrs", "\"7.1 Mix\""},
      {"L R L R C LFE Ls Rs L R", "\"Stereo + 5.1 Mix + Stereo\""},
      {"L R L R C LFE Ls Rs L R L R C LFE Ls Rs", "\"2x Stereo/5.1 Mix Pairs\""},
      {"L R C LFE Ls Rs L R L R C LFE Ls Rs L R", "\"2x 5.1 Mix/Stereo Pairs\""},
      {"L R L R L R C LFE Ls Rs L R C LFE Ls Rs", "\"2x Stereo + 2x 5.1 Mix\""},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(best(monoTracks(row.labels)), row.item) << row.labels;
  }
}

TEST(IdentificationTest, pairsWithDolbyEDecide) {
  EXPECT_EQ(best(monoTracks("- - E - - E - - - -")),
            "\"2x Stereo/Dolby E Pairs + 2 Stereo (R123 12d)\"");
  EXPECT_EQ(best(monoTracks("- - E - - E - - E")), "\"3x Stereo/Dolby E Pairs (R123 12h)\"");
  EXPECT_EQ(best(monoTracks("- - - - E E - - - -")),
            "\"2x Stereo + 2x Dolby E + 2x Stereo (R123 12c)\"");
  EXPECT_EQ(best(monoTracks("- - E - - E - - E - - E")), "\"4x Stereo/Dolby E Pairs\"");
}

TEST(IdentificationTest, pairsWhereNoLayoutHasThemFitNothing) {
  EXPECT_EQ(best(monoTracks("E - -")), "none");
  EXPECT_EQ(best(monoTracks("- E -")), "none");
}

TEST(IdentificationTest, whatNothingTellsApartIsNamedTogether) {
  EXPECT_EQ(best(monoTracks("- - - -")), "\"2 Stereo\"");
  EXPECT_EQ(best(monoTracks("- - - - - -")), "\"5.1 Mix\" or \"3 Stereo\"");
}

TEST(IdentificationTest, streamsAreTakenWhole) {
  EXPECT_EQ(best(mediaOf({plainStream("1", 6), plainStream("2", 2)})),
            "\"5.1 Mix + Stereo Downmix\"");
  EXPECT_EQ(best(mediaOf({plainStream("1", 2), plainStream("2", 6)})), "\"Stereo + 5.1 Mix\"");
  EXPECT_EQ(best(mediaOf({plainStream("1", 8)})), "\"7.1 Mix\"");
  EXPECT_EQ(best(mediaOf({plainStream("1", 2), plainStream("2", 2)})), "\"2 Stereo\"");
}

// The candidate of a layout.
Candidate candidate(const RawMedia& media, const std::string& name) {
  for (const Candidate& one : identified(media)) {
    if (one.item.name == name) {
      return one;
    }
  }
  return {};
}

// "id points" of each reason for a layout, in their order.
std::vector<std::string> points(const RawMedia& media, const std::string& name) {
  std::vector<std::string> texts;
  for (const Reason& reason : candidate(media, name).reasons) {
    texts.push_back(reason.id + " " + std::to_string(reason.points));
  }
  return texts;
}

TEST(IdentificationTest, eachReasonHasItsPoints) {
  const RawMedia oneFormat = mediaOf({plainStream("1", 6), plainStream("2", 2)});
  const auto with = [&](std::string RawAudioStream::*property, const char* value) {
    RawMedia media = oneFormat;
    media.audioStreams[1].*property = value;
    return media;
  };
  const std::vector<std::string> change = {"whole-stream 6", "whole-stream 2", "format-changes 2",
                                           "formats-agree 1"};
  const struct {
    RawMedia media;
    const char* layout;
    std::vector<std::string> points;
  } rows[] = {
      {monoTracks("- -"), "2 Mono", {}},
      {monoTracks("L R"), "Stereo", {"stereo-labels 2", "formats-agree 1"}},
      {monoTracks("L C"), "Stereo", {"formats-agree 1", "no-stereo-labels -2"}},
      {monoTracks("L R C LFE Ls Rs"),
       "5.1 Mix",
       {"full-51-set 6", "usual-order 2", "formats-agree 1"}},
      {monoTracks("Rs Ls LFE C R L"), "5.1 Mix", {"full-51-set 6", "formats-agree 1"}},
      {monoTracks("L R C LFE Ls -"), "5.1 Mix", {"formats-agree 1", "no-51-set -6"}},
      {monoTracks("L R C LFE Ls Rs"), "6 Mono", {"51-set-on-monos -4"}},
      {monoTracks("Rs Ls LFE C R L"), "6 Mono", {}},
      {monoTracks("L R C LFE Ls Rs Lrs Rrs"), "7.1 Mix", {"full-71-set 10", "formats-agree 1"}},
      {monoTracks("L R C LFE Ls Rs L R"), "7.1 Mix", {"formats-agree 1", "no-71-set -6"}},
      {mediaOf({plainStream("1", 8)}), "7.1 Mix", {"whole-stream 8", "formats-agree 1"}},
      {mediaOf({plainStream("1", 4), plainStream("2", 4)}),
       "5.1 Mix + Stereo Downmix",
       {"formats-agree 1", "cut-stream -3"}},
      {oneFormat,
       "5.1 Mix + Stereo Downmix",
       {"whole-stream 6", "whole-stream 2", "formats-agree 1"}},
      {with(&RawAudioStream::bitDepth, "16"), "5.1 Mix + Stereo Downmix", change},
      {with(&RawAudioStream::samplingRate, "44100"), "5.1 Mix + Stereo Downmix", change},
      {with(&RawAudioStream::format, "AAC"), "5.1 Mix + Stereo Downmix", change},
      {monoTracks("- - E - - E - - - -"),
       "2x Stereo/Dolby E Pairs + 2 Stereo (R123 12d)",
       {"coded-pair 10", "coded-pair 10", "formats-agree 1"}},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(points(row.media, row.layout), row.points) << row.layout;
  }
}

TEST(IdentificationTest, aServiceThatCutsAStreamCosts) {
  const RawMedia twoOfFour = mediaOf({plainStream("1", 4), plainStream("2", 4)});
  const struct {
    RawMedia media;
    const char* layout;
    TrackNumbers cut;  // none: nothing is cut
  } rows[] = {
      {twoOfFour, "5.1 Mix + Stereo Downmix", trackRange(1, 6)},  // ends inside
      {twoOfFour, "Stereo + 5.1 Mix", trackRange(3, 6)},          // begins inside
      {mediaOf({plainStream("1", 4), plainStream("2", 2), plainStream("3", 2)}),
       "5.1 Mix + Stereo Downmix",
       {}},  // two whole streams
      {twoOfFour, "7.1 Mix", {}},
      {mediaOf({plainStream("1", 8)}), "Stereo + 5.1 Mix", {}},  // a part of one
  };
  for (const auto& row : rows) {
    const Candidate found = candidate(row.media, row.layout);
    EXPECT_EQ(hasReason(found, "cut-stream"), !row.cut.empty()) << row.layout;
    for (const Reason& reason : found.reasons) {
      if (reason.id == "cut-stream") {
        EXPECT_EQ(reason.points, -3);
        EXPECT_EQ(reason.tracks, row.cut) << row.layout;
      }
    }
  }
}

TEST(IdentificationTest, labelsWeighMoreThanStreams) {
  EXPECT_EQ(best(mediaOf({plainStream("1", 8, "L R C LFE Ls Rs L R")})),
            "\"5.1 Mix + Stereo Downmix\"");
}

TEST(IdentificationTest, servicesOfUnequalFormatsCannotBeCarried) {
  RawMedia media = monoTracks("- -");
  media.audioStreams[1].samplingRate = "44100";
  EXPECT_EQ(best(media), "\"2 Mono\"");
  EXPECT_EQ(identified(media).size(), 1u);
}

TEST(IdentificationTest, aChangeOfFormatMarksTheEndOfAService) {
  RawMedia media = monoTracks("- - - - - - - -");
  media.audioStreams[6].bitDepth = media.audioStreams[7].bitDepth = "16";
  EXPECT_EQ(best(media), "\"5.1 Mix + Stereo Downmix\" or \"4 Stereo\"");
  EXPECT_TRUE(hasReason(identified(media).front(), "format-changes"));
}

TEST(IdentificationTest, aChangeOfFormatIsLookedForBesideTheBorderAlone) {
  RawMedia media = monoTracks("- - - - - - - - - - - - - - - -");
  media.audioStreams[6].bitDepth = "16";
  std::vector<TrackNumbers> changes;
  for (const Reason& reason : candidate(media, "5.1 Mix + 2x Mono + Stereo + 6x Mono").reasons) {
    if (reason.id == "format-changes") {
      changes.push_back(reason.tracks);
    }
  }
  EXPECT_EQ(changes, (std::vector<TrackNumbers>{{6, 7}}));
}

TEST(IdentificationTest, everyLayoutThatFitsIsNamed) {
  const std::vector<Candidate> candidates = identified(monoTracks("L R C LFE Ls Rs L R"));
  ASSERT_EQ(candidates.size(), 6u);
  EXPECT_EQ(candidates.front().codes, std::vector<std::string>{"8b"});
  EXPECT_EQ(candidates.front().services[1].tracks, (TrackNumbers{7, 8}));
  EXPECT_TRUE(std::ranges::is_sorted(candidates, std::greater{}, &Candidate::score));
  for (const Candidate& candidate : candidates) {
    EXPECT_EQ(candidate.score, pointsOf(candidate.reasons));
  }
}

TEST(IdentificationTest, eachReasonNamesItsTracks) {
  const Candidate top = identified(monoTracks("L R C LFE Ls Rs L R")).front();
  ASSERT_TRUE(hasReason(top, "full-51-set"));
  EXPECT_EQ(top.reasons.front().sentence,
            "The 5.1 Mix on tracks 1 to 6 has a full set of 5.1 labels: L R C LFE Ls Rs.");
  EXPECT_EQ(top.reasons.front().tracks, trackRange(1, 6));
}

TEST(IdentificationTest, theProgrammesOfAPairAreCounted) {
  RawMedia media = monoTracks("- - E - - E - - - -");
  media.audioStreams.erase(media.audioStreams.begin() + 3);
  const Candidate found = identified(media).front();
  ASSERT_GE(found.reasons.size(), 2u);
  EXPECT_EQ(
      found.reasons[0].sentence,
      "Coded audio (Dolby E, 1 programme) is on tracks 3 and 4, where the layout has Dolby E.");
  EXPECT_EQ(
      found.reasons[1].sentence,
      "Coded audio (Dolby E, 2 programmes) is on tracks 7 and 8, where the layout has Dolby E.");
}

TEST(IdentificationTest, fourteenTracksHaveNoLayout) {
  EXPECT_EQ(best(monoTracks("- - - - - - - - - - - - - -")), "none");
  EXPECT_EQ(best(monoTracks("-")), "none");
}

}  // namespace
}  // namespace kestrel::host
