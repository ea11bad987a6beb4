#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include "Scenes.h"
#include "VemContourArray.h"
#include "VemOverlayPath.h"
#include "VemROIArray.h"
#include "VemRegionArray.h"
#include "vem/json.h"
#include "vem/view.h"

namespace {

using nlohmann::json;
using vem::draw_style;

struct Result {
  int status;
  std::string output;
};

// The program, in a folder of its own.
class Show : public testing::Test {
 protected:
  void SetUp() override {
    std::string folder = testing::TempDir() + "vem-show-XXXXXX";
    ASSERT_NE(mkdtemp(&folder[0]), nullptr);
    folder_ = folder;
    ASSERT_TRUE(cv::imwrite(Path("picture.png"), Ground()));
  }

  void TearDown() override {
    EXPECT_EQ(std::system(("chmod -R u+w '" + folder_ + "' && rm -r '" + folder_ + "'").c_str()),
              0);
  }

  std::string Path(const std::string& name) const { return folder_ + "/" + name; }

  void Write(const std::string& name, const std::string& contents) const {
    std::ofstream(Path(name), std::ios::binary) << contents;
  }

  std::string Contents(const std::string& name) const {
    std::ifstream file(Path(name), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  }

  // In a shell that does something before.
  Result Run(const std::string& arguments, const std::string& before = "") const {
    const std::string command =
        "cd '" + folder_ + "' && " + before + "'" SHOW_PROGRAM "' " + arguments + " 2>&1";
    std::FILE* const pipe = popen(command.c_str(), "r");
    Result result = {-1, ""};
    char part[256];
    while (std::fgets(part, sizeof(part), pipe) != nullptr) result.output += part;
    const int status = pclose(pipe);
    if (WIFEXITED(status)) result.status = WEXITSTATUS(status);
    return result;
  }

  // What the program makes of a scene, drawn on the ground.
  cv::Mat Shown(const json& scene, const std::string& options = "") const {
    Write("scene.json", scene.dump());
    const Result result = Run(options + " scene.json picture.png result.png");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "");
    return cv::imread(Path("result.png"), cv::IMREAD_UNCHANGED);
  }

  // The sentence about a scene that is not drawn.
  std::string Complaint(const std::string& scene) const {
    Write("scene.json", scene);
    const Result result = Run("scene.json picture.png result.png");
    EXPECT_EQ(result.status, 3);
    EXPECT_NE(access(Path("result.png").c_str(), F_OK), 0);
    return result.output;
  }

 private:
  std::string folder_;
};

template <typename... Arguments>
cv::Mat Drawn(const Arguments&... arguments) {
  cv::Mat picture = Ground();
  vem::draw(picture, arguments...);
  return picture;
}

bool Same(const cv::Mat& a, const cv::Mat& b) {
  return a.size() == b.size() && a.type() == b.type() && cv::norm(a, b, cv::NORM_INF) == 0;
}

VemOverlay Overlay() {
  VemOverlay overlay;
  overlay.SetPen(60, 215, 255, 3);
  overlay.SetBrush(235, 205, 60, 1);
  VemPoint center(36.25, 31.5);
  overlay.GenRect2(center, 52, 22, 30);
  return overlay;
}

}  // namespace

TEST_F(Show, DrawsADocumentOfEachClass) {
  VemOverlay overlay = Overlay();
  EXPECT_TRUE(Same(Shown(vem::to_json(overlay)), Drawn(overlay)));
  VemOverlayPath path;
  path.AddOverlay(overlay);
  path.AddOverlay(overlay);
  EXPECT_TRUE(Same(Shown(vem::to_json(path)), Drawn(path)));

  const draw_style style(0x56, 0x34, 0x12, 4, true);
  const std::string options = "--color 123456 --width 4 --fill";
  VemROI roi = Circle(30, 30, 20);
  EXPECT_TRUE(Same(Shown(vem::to_json(roi), options), Drawn(roi, style)));
  EXPECT_TRUE(Same(Shown(vem::to_json(roi)), Drawn(roi)));
  VemRegion region = RegionOf({{5, 2, 30}, {6, 4, 40}, {7, 4, 40}}, 50, 50);
  EXPECT_TRUE(Same(Shown(vem::to_json(region), options), Drawn(region, style)));
  VemContour contour = ContourOf({{5, 2}, {60, 30}, {6, 50}});
  EXPECT_TRUE(Same(Shown(vem::to_json(contour), options), Drawn(contour, style)));
  VemContourArray contours;
  contours.Append(contour);
  EXPECT_TRUE(Same(Shown(vem::to_json(contours), options), Drawn(contours, style)));
  const VemPointArray points = PointsOf({{5, 2}, {60, 30}});
  EXPECT_TRUE(Same(Shown(vem::to_json(points), options), Drawn(points, style)));

  VemROIArray rois;
  rois.Append(roi);
  EXPECT_TRUE(Same(Shown(vem::to_json(rois), options), Drawn(roi, style)));
  VemRegionArray regions;
  regions.Append(region);
  EXPECT_TRUE(Same(Shown(vem::to_json(regions), options), Drawn(region, style)));
}

TEST_F(Show, DrawsAListInItsOrder) {
  const VemOverlay overlay = Overlay();
  const VemROI roi = Circle(30, 30, 20);
  cv::Mat expected = Ground();
  vem::draw(expected, roi);
  vem::draw(expected, overlay);
  EXPECT_TRUE(Same(Shown({vem::to_json(roi), vem::to_json(overlay)}), expected));
  EXPECT_TRUE(Same(Shown(json::array()), Ground()));
}

TEST_F(Show, MakesGreyPicturesColouredAndKeepsTheirDepth) {
  cv::Mat grey(64, 72, CV_16UC1, cv::Scalar(10000));
  ASSERT_TRUE(cv::imwrite(Path("picture.png"), grey));
  cv::Mat expected(64, 72, CV_16UC3, cv::Scalar::all(10000));
  vem::draw(expected, Overlay());
  EXPECT_TRUE(Same(Shown(vem::to_json(Overlay())), expected));
}

TEST_F(Show, ReadsAndWritesTheFormatsOfOpenCV) {
  Write("scene.json", vem::to_json(Overlay()).dump());
  EXPECT_EQ(Run("scene.json picture.png result.bmp").status, 0);
  EXPECT_EQ(Run("scene.json result.bmp result.png").status, 0);
  EXPECT_FALSE(cv::imread(Path("result.png")).empty());
}

TEST_F(Show, TellsItsUseAndItsVersion) {
  EXPECT_EQ(Run("--version").output, "vem-show 1.0.0\n");
  const Result help = Run("--help");
  EXPECT_EQ(help.status, 0);
  EXPECT_NE(help.output.find("vem-show [options] SCENE PICTURE RESULT"), std::string::npos);
}

TEST_F(Show, TellsWhatIsWrongWithTheCall) {
  const struct {
    const char* arguments;
    const char* sentence;
  } kCalls[] = {
      {"", "vem-show: takes three files, SCENE PICTURE RESULT (see --help)\n"},
      {"a b", "vem-show: takes three files, SCENE PICTURE RESULT (see --help)\n"},
      {"a b c d", "vem-show: takes three files, SCENE PICTURE RESULT (see --help)\n"},
      {"--colour 123456 a b c", "vem-show: --colour is no option (see --help)\n"},
      {"a b c --width", "vem-show: --width needs a value\n"},
      {"--width -3 a b c", "vem-show: --width does not take \"-3\"\n"},
      {"--width 123456 a b c", "vem-show: --width does not take \"123456\"\n"},
      {"--color red a b c", "vem-show: --color does not take \"red\"\n"},
      {"--color fff a b c", "vem-show: --color takes six digits, RRGGBB\n"},
  };
  for (const auto& call : kCalls) {
    const Result result = Run(call.arguments);
    EXPECT_EQ(result.status, 2) << call.arguments;
    EXPECT_EQ(result.output, call.sentence);
  }
}

TEST_F(Show, TellsWhichFileCannotBeReadOrWritten) {
  Write("scene.json", vem::to_json(Overlay()).dump());
  Write("text.png", "no picture");
  Write("empty.png", "");
  const struct {
    const char* arguments;
    const char* sentence;
  } kCalls[] = {
      {"none.json picture.png result.png", "vem-show: none.json: can't be read\n"},
      {". picture.png result.png", "vem-show: .: can't be read\n"},
      {"scene.json none.png result.png", "vem-show: none.png: can't be read\n"},
      {"scene.json text.png result.png", "vem-show: text.png: is no picture that OpenCV reads\n"},
      {"scene.json empty.png result.png", "vem-show: empty.png: is no picture that OpenCV reads\n"},
      {"scene.json picture.png result.odd",
       "vem-show: result.odd: OpenCV does not write such a file\n"},
      {"scene.json picture.png ./result",
       "vem-show: ./result: OpenCV does not write such a file\n"},
      {"scene.json picture.png none/result.png", "vem-show: none/result.png: can't be written\n"},
  };
  for (const auto& call : kCalls) {
    const Result result = Run(call.arguments);
    EXPECT_EQ(result.status, 1) << call.arguments;
    EXPECT_EQ(result.output, call.sentence);
  }
}

TEST_F(Show, TellsWhereASceneIsWrong) {
  EXPECT_EQ(Complaint(""), "vem-show: scene.json: line 1, column 1: is not JSON\n");
  EXPECT_EQ(Complaint("{\n  \"class\": ]\n}"),
            "vem-show: scene.json: line 2, column 12: is not JSON\n");
  EXPECT_EQ(Complaint("[1e999]"), "vem-show: scene.json: holds a number that is too large\n");
  EXPECT_EQ(Complaint("3"), "vem-show: scene.json: expected an object\n");
  EXPECT_EQ(Complaint("[3]"), "vem-show: scene.json: /0: expected an object\n");
  EXPECT_EQ(Complaint("{}"), "vem-show: scene.json: /class: is missing\n");
  EXPECT_EQ(Complaint("[{\"class\": 7}]"), "vem-show: scene.json: /0/class: expected a text\n");
  EXPECT_EQ(Complaint("{\"class\": \"VemFont\"}"),
            "vem-show: scene.json: /class: is none that is drawn\n");
  json scene = {vem::to_json(Circle(30, 30, 20)), vem::to_json(Circle(30, 30, 20))};
  scene[1]["center"][0] = "left";
  const std::string complaint = Complaint(scene.dump());
  EXPECT_EQ(complaint.find("vem-show: scene.json: /1/center/0: "), 0u) << complaint;
}

TEST_F(Show, LeavesAnOldResultWholeWhereWritingFails) {
  Write("scene.json", vem::to_json(Overlay()).dump());
  Write("result.bmp", "an old result");
  // No file may grow beyond some blocks; the picture is larger.
  const Result result = Run("scene.json picture.png result.bmp", "trap '' XFSZ; ulimit -f 8; ");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output, "vem-show: result.bmp: can't be written\n");
  EXPECT_EQ(Contents("result.bmp"), "an old result");
  EXPECT_EQ(std::system(("test -z \"$(ls -A '" + Path("") + "' | grep '^.vem')\"").c_str()), 0);
}

TEST_F(Show, ReplacesAnOldResultAsWhatItIs) {
  Write("scene.json", vem::to_json(Overlay()).dump());
  Write("old.png", "an old result");
  ASSERT_EQ(chmod(Path("old.png").c_str(), 0640), 0);
  ASSERT_EQ(symlink("old.png", Path("result.png").c_str()), 0);
  EXPECT_EQ(Run("scene.json picture.png result.png").status, 0);
  struct stat link = {}, file = {};
  ASSERT_EQ(lstat(Path("result.png").c_str(), &link), 0);
  ASSERT_EQ(stat(Path("old.png").c_str(), &file), 0);
  EXPECT_TRUE(S_ISLNK(link.st_mode));
  EXPECT_EQ(file.st_mode & 07777, 0640u);
  EXPECT_TRUE(Same(cv::imread(Path("old.png")), Drawn(Overlay())));
  EXPECT_EQ(Run("scene.json picture.png new.png", "umask 027; ").status, 0);
  ASSERT_EQ(stat(Path("new.png").c_str(), &file), 0);
  EXPECT_EQ(file.st_mode & 07777, 0640u);
}

TEST_F(Show, WritesIntoAPipe) {
  Write("scene.json", vem::to_json(Overlay()).dump());
  ASSERT_EQ(mkfifo(Path("pipe.png").c_str(), 0600), 0);
  EXPECT_EQ(Run("scene.json picture.png pipe.png", "{ cat pipe.png >piped.png & } && ").status, 0);
  for (int i = 0; i < 100 && cv::imread(Path("piped.png")).empty(); ++i) usleep(10000);
  EXPECT_TRUE(Same(cv::imread(Path("piped.png")), Drawn(Overlay())));
}

TEST_F(Show, TakesFilesThatLookLikeOptions) {
  Write("--scene.json", vem::to_json(Overlay()).dump());
  EXPECT_EQ(Run("--width 2 -- --scene.json picture.png --help.png").status, 0);
  EXPECT_TRUE(Same(cv::imread(Path("--help.png")), Drawn(Overlay())));
}

TEST_F(Show, FailsWhereItCannotSpeak) {
  for (const char* option : {"--help", "--version"}) {
    const Result result = Run(std::string(option) + " >/dev/full");
    EXPECT_EQ(result.status, 1) << option;
  }
}

// But for the letters, which OpenCV writes.
TEST_F(Show, MakesThePictureOfItsPage) {
  const std::string docs = DOCS_FOLDER "/";
  const Result result = Run("--width 3 --fill --color 6EDC5A '" + docs + "view_scene.json' '" +
                            docs + "view_plate.png' result.png");
  EXPECT_EQ(result.status, 0) << result.output;
  const cv::Mat shown = cv::imread(Path("result.png")), kept = cv::imread(docs + "view.png");
  ASSERT_EQ(shown.size(), kept.size());
  const cv::Rect letters(280, 0, 190, 36);
  EXPECT_LT(cv::norm(shown(letters), kept(letters), cv::NORM_L1), 10000);
  shown(letters).setTo(0);
  kept(letters).setTo(0);
  EXPECT_EQ(cv::norm(shown, kept, cv::NORM_INF), 0);
}
