#include "tests/host/support/html_documents.h"

#include <string>
#include <vector>

namespace kestrel::host {
namespace {

Json stream(const std::string& id, const std::string& format, int channels, const Json& labels,
            const Json& tracks) {
  return {{"id", id},
          {"channel", nullptr},
          {"format", format},
          {"channels", channels},
          {"sampleRate", 48000},
          {"bitDepth", 24},
          {"labels", labels},
          {"pairCoded", false},
          {"programme", nullptr},
          {"tracks", tracks}};
}

Json programme(int number, int channels, const Json& labels, const Json& tracks) {
  Json coded = stream("3 / 4-" + std::to_string(number), "Dolby E", channels, labels, tracks);
  coded["pairCoded"] = true;
  coded["programme"] = number;
  return coded;
}

Json track(int number, const std::string& label, const Json& streams, bool isPairCoded = false) {
  return {{"number", number},   {"name", std::to_string(2000 + number)},
          {"streams", streams}, {"channel", 1},
          {"label", label},     {"pairCoded", isPairCoded}};
}

Json service(const std::string& name, const Json& tracks, bool isHeld) {
  return {{"name", name},      {"tracks", tracks},        {"held", isHeld},
          {"requested", true}, {"labels", Json::array()}, {"programmes", Json::array()}};
}

Json placed(const std::string& name, const Json& tracks) {
  return {{"name", name}, {"tracks", tracks}};
}

Json item(int id, const std::string& name) { return {{"id", id}, {"name", name}}; }

Json finding(const std::string& id, const std::string& severity, const std::string& sentence,
             const Json& tracks) {
  return {{"id", id},
          {"severity", severity},
          {"sentence", sentence},
          {"service", nullptr},
          {"tracks", tracks}};
}

Json verdict(const std::string& result, int exitCode, const std::string& sentence) {
  return {{"result", result}, {"exitCode", exitCode}, {"sentence", sentence}};
}

Json document(const std::string& file, const Json& verdictOfFile, int total) {
  return {{"schema", "kestrel-result-1"},
          {"kestrel", "0.1.0"},
          {"file", file},
          {"verdict", verdictOfFile},
          {"error", nullptr},
          {"reader", "libmediainfo"},
          {"container", "MXF"},
          {"trackTotal", total},
          {"streams", Json::array()},
          {"tracks", Json::array()},
          {"declared", nullptr},
          {"expectation", nullptr},
          {"services", Json::array()},
          {"identification", Json::array()},
          {"crossCheck", nullptr},
          {"findings", Json::array()}};
}

void addMonoTracks(Json& result, const std::vector<std::string>& labels) {
  for (std::size_t index = 0; index < labels.size(); ++index) {
    const int number = static_cast<int>(index) + 1;
    const Json own = labels[index].empty() ? Json::array() : Json::array({labels[index]});
    result["streams"].push_back(
        stream(std::to_string(2000 + number), "PCM", 1, own, Json::array({number})));
    result["tracks"].push_back(track(number, labels[index], Json::array({index})));
  }
}

Json disagreement() {
  return {{"id", "labels-differ"},
          {"sentence", "The labels of tracks 7 and 8 are not those of a stereo pair"},
          {"tracks", {7, 8}},
          {"values",
           {{{"source", "declared code"}, {"value", "Stereo"}},
            {{"source", "labels"}, {"value", "L Lt"}}}}};
}

}  // namespace

Json brokenDocument() {
  Json result =
      document("deliveries/broken <b>&amp;\"quoted\"'.mxf",
               verdict("does-not-conform", 1, "The file does not carry 5.1 Mix, Stereo."), 8);
  addMonoTracks(result, {"L", "R", "C", "LFE", "Ls", "Rs", "L", "Lt"});
  result["streams"][7]["bitDepth"] = 16;
  result["declared"] = {{"text", "EBU R 123: 8b"},
                        {"vocabulary", "EBU R 123"},
                        {"code", "8b"},
                        {"item", item(7, "5.1 Mix, Stereo")}};
  result["expectation"] = {{"kind", "declared"},
                           {"text", "EBU R 123: 8b"},
                           {"item", item(7, "5.1 Mix, Stereo")},
                           {"code", "8b"},
                           {"description", "T8=5.1 Mix,Stereo"}};
  result["services"] = {service("5.1 Mix", {1, 2, 3, 4, 5, 6}, true),
                        service("Stereo", {7, 8}, false)};
  result["identification"] = {
      {{"item", item(6, "5.1 Mix, Mono, Mono")},
       {"score", 12},
       {"codes", Json::array({"8x"})},
       {"services",
        {placed("5.1 Mix", {1, 2, 3, 4, 5, 6}), placed("Mono", Json::array({7})),
         placed("Mono", Json::array({8}))}},
       {"reasons",
        {{{"id", "full-surround-set"},
          {"points", 12},
          {"sentence", "The labels of tracks 1 to 6 are a full 5.1 set"},
          {"tracks", {1, 2, 3, 4, 5, 6}}}}}}};
  result["crossCheck"] = {{"agrees", false},
                          {"disagreements", Json::array({disagreement()})},
                          {"majority",
                           {{"item", nullptr},
                            {"sources", Json::array()},
                            {"sourceCount", 3},
                            {"sentence", "No layout has more sources than another."}}}};
  result["findings"] = {
      finding("formats-differ", "error", "Tracks 7 and 8 of the stereo differ in bit depth",
              {7, 8}),
      finding("label-order", "warning", "Track 2 is labelled in another order", Json::array({2})),
      finding("file-truncated", "note", "A note about the whole file", Json::array())};
  return result;
}

Json codedDocument() {
  Json result = document("coded.wav", verdict("identified", 0, "It is Stereo and Dolby E."), 4);
  addMonoTracks(result, {"", ""});
  result["streams"].push_back(programme(1, 6, {"L", "R", "C", "LFE", "Ls", "Rs"}, {3, 4}));
  result["streams"].push_back(programme(2, 2, {"L", "R"}, {3, 4}));
  result["tracks"].push_back(track(3, "", {2, 3}, true));
  result["tracks"].push_back(track(4, "", {2, 3}, true));
  result["identification"] =
      Json::array({{{"item", item(3, "Stereo, Dolby E")},
                    {"score", 5},
                    {"codes", Json::array()},
                    {"services", {placed("Stereo", {1, 2}), placed("Dolby E", {3, 4})}},
                    {"reasons", Json::array()}}});
  return result;
}

Json conformingDocument() {
  Json result = document("good.mov", verdict("conforms", 0, "The file carries Stereo."), 2);
  addMonoTracks(result, {"L", "R"});
  result["expectation"] = {{"kind", "item"},
                           {"text", "Stereo"},
                           {"item", item(1, "Stereo")},
                           {"code", ""},
                           {"description", "T2=Stereo"}};
  result["services"] = Json::array({service("Stereo", {1, 2}, true)});
  return result;
}

Json unexaminedDocument() {
  Json result =
      document("</title><script>window.attacked = 1</script>\n\x01\x7f\u202Egpj.mxf \uFFFD",
               verdict("not-examined", 2, "The file could not be examined."), 0);
  result["reader"] = "";
  result["container"] = "";
  result["error"] = {{"id", "no-media"}, {"sentence", "Not a media file that libmediainfo knows"}};
  return result;
}

Json allDocuments() {
  return Json::array(
      {brokenDocument(), codedDocument(), conformingDocument(), unexaminedDocument()});
}

std::string line(const Json& document) { return document.dump() + "\n"; }

}  // namespace kestrel::host
