#include "host/service_check.h"

#include <gtest/gtest.h>

namespace kestrel::host {
namespace {

std::vector<AudioStreamInfo> monoStreams(std::int32_t count) {
  std::vector<AudioStreamInfo> streams;
  for (std::int32_t index = 0; index < count; ++index) {
    AudioStreamInfo stream;
    stream.streamId = std::to_wstring(index + 1);
    stream.group = index;
    stream.channelCount = 1;
    streams.push_back(stream);
  }
  return streams;
}

ServiceRequest request(const std::string& layout) {
  ServiceRequest result;
  result.layoutDescription = layout;
  return result;
}

TEST(ServiceCheckTest, theServicesAreTheLibrarys) {
  const ServiceCheck check = checkServices(monoStreams(3), request("T3=Stereo,Mono"));
  EXPECT_EQ(check.conformance, Conformance::kConforms);
  ASSERT_EQ(check.services.size(), 2u);
  EXPECT_STREQ(serviceName(check.services[0]), "Stereo");
  EXPECT_STREQ(serviceName(check.services[1]), "Mono");
}

TEST(ServiceCheckTest, otherServicesAreToldFromUnequalFormats) {
  std::vector<AudioStreamInfo> streams = monoStreams(2);
  EXPECT_EQ(checkServices(streams, request("T2=EMCA")).conformance, Conformance::kOtherServices);
  EXPECT_EQ(checkServices(streams, request("T4=Stereo")).conformance, Conformance::kOtherServices);
  EXPECT_EQ(checkServices(streams, request("nothing")).conformance, Conformance::kOtherServices);
  streams[1].formatKey1 = 44100;
  const ServiceCheck check = checkServices(streams, request("T2=Stereo"));
  EXPECT_EQ(check.conformance, Conformance::kUnequalFormats);
  EXPECT_TRUE(check.services.empty());
}

TEST(ServiceCheckTest, aFailedCheckHasNoServices) {
  EXPECT_TRUE(checkServices(monoStreams(2), request("T2=EMCA")).services.empty());
}

TEST(ServiceCheckTest, theSwitchesReachTheLibrary) {
  std::vector<AudioStreamInfo> streams = monoStreams(1);
  streams[0].channelCount = 6;
  streams[0].trackLabels = L"Ls Rs L R C LFE";
  ServiceRequest wanted = request("T6=-5.1 Mix");
  wanted.surroundChannelOrder = L"the order";
  EXPECT_TRUE(checkServices(streams, wanted).services.empty());
  wanted.reportAll = true;
  ASSERT_EQ(checkServices(streams, wanted).services.size(), 1u);
  EXPECT_EQ(checkServices(streams, wanted).services[0].label, L"Ls Rs L R C LFE");
  EXPECT_EQ(checkServices(streams, wanted).services[0].requested, 0);
  wanted.checkLabels = false;
  EXPECT_EQ(checkServices(streams, wanted).services[0].label, L"the order");
}

TEST(ServiceCheckTest, aServiceIsNamedByItsSizeAndCoding) {
  const struct {
    std::int32_t trackCount;
    std::uint8_t isEmca;
    const char* name;
  } rows[] = {{1, 0, "Mono"},     {2, 0, "Stereo"},  {6, 0, "5.1 Mix"}, {8, 0, "7.1 Mix"},
              {-1, 0, "unknown"}, {3, 0, "unknown"}, {2, 1, "EMCA"},    {6, 1, "EMCA"}};
  for (const auto& row : rows) {
    ServiceMapResult service;
    service.trackCount = row.trackCount;
    service.isEmca = row.isEmca;
    EXPECT_STREQ(serviceName(service), row.name) << row.trackCount;
  }
}

}  // namespace
}  // namespace kestrel::host
