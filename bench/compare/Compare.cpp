// Runs our figure and each peer's in turn, round after round in one process, and prints a table of
// the medians of the ratios within a round. A ratio below its bar is marked.
// kUsage tells how it is called.

#include "compare/Compare.h"

#include <malloc.h>
#include <sys/resource.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <limits>

#include <opencv2/core.hpp>

namespace {

const Family kFamilies[] = {AddRunRows,  AddComponentRows, AddOutlineRows,
                            AddMaskRows, AddValueRows,     AddRegionRows};

struct Options {
  Setting setting;
  bool faults = false;
  int rounds = 15;
  std::string filter;
};

double ProcessorSeconds() {
  timespec time;
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

// The first calls are not timed: they find the caches as the work before has left them.
double Seconds(const Work& work, int repeats) {
  for (int i = 0; i < (repeats + 3) / 4; ++i) work();
  const double begin = ProcessorSeconds();
  for (int i = 0; i < repeats; ++i) work();
  return (ProcessorSeconds() - begin) / repeats;
}

// As many repeats as fill a few milliseconds, so that the clock does not count.
int Repeats(const Work& work, bool small) {
  if (small) return 1;
  work();
  const double once = std::max(Seconds(work, 1), 1e-7);
  return std::max(1, static_cast<int>(8e-3 / once));
}

double MedianOf(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

struct Figures {
  double seconds;              // Of ours.
  std::vector<double> ratios;  // Of each peer's time to ours.
};

Figures Measure(const Row& row, const Options& options) {
  const bool small = options.setting.small;
  const int repeats = Repeats(row.ours, small);
  std::vector<int> peerRepeats;
  for (const Peer& peer : row.peers) peerRepeats.push_back(Repeats(peer.run, small));
  std::vector<double> ours;
  std::vector<std::vector<double>> ratios(row.peers.size());
  for (int round = 0; round < options.rounds; ++round) {
    ours.push_back(Seconds(row.ours, repeats));
    for (std::size_t i = 0; i < row.peers.size(); ++i) {
      ratios[i].push_back(Seconds(row.peers[i].run, peerRepeats[i]) / ours.back());
    }
  }
  Figures figures{MedianOf(ours), {}};
  for (const std::vector<double>& values : ratios) figures.ratios.push_back(MedianOf(values));
  return figures;
}

std::string Text(const char* format, double value) {
  char text[64];
  std::snprintf(text, sizeof(text), format, value);
  return text;
}

// A figure, and its bar with a mark where it is missed.
std::string Judged(const std::string& figure, const std::string& bar, bool missed, int& misses) {
  if (bar.empty()) return figure;
  if (missed) ++misses;
  return figure + " (" + bar + (missed ? ") **missed**" : ")");
}

std::string Times(const std::string& peer, double ratio, double bar, int& misses) {
  return peer + " " +
         Judged(Text("%.2f", ratio), bar > 0 ? Text("%.2f", bar) : "", ratio < bar, misses);
}

int PrintRow(const Row& row, const Figures& figures) {
  int misses = 0;
  std::string line = "| " + row.work + " | " + row.input + " | ";
  line += Text("%.1f", figures.seconds * 1e6) + " |";
  for (std::size_t i = 0; i < row.peers.size(); ++i) {
    line += (i == 0 ? " " : ", ") +
            Times(row.peers[i].name, figures.ratios[i], row.peers[i].bar, misses);
  }
  if (row.units > 0) {
    const double each = figures.seconds / row.units * 1e9;
    line += std::string(row.peers.empty() ? " " : ", ") + "ns a " + row.unit + " ";
    line += Judged(Text("%.1f", each), "at most " + Text("%.4g", row.limitNanoseconds),
                   each > row.limitNanoseconds, misses);
  }
  std::printf("%s |\n", line.c_str());
  std::fflush(stdout);
  return misses;
}

/// The ratios of many rows to one peer, of which the median counts.
struct Median {
  std::string work;
  std::string peer;
  double bar;
  std::vector<double> ratios;
};

void Collect(const Row& row, const Figures& figures, std::vector<Median>& medians) {
  for (std::size_t i = 0; i < row.peers.size(); ++i) {
    const Peer& peer = row.peers[i];
    if (peer.medianBar <= 0) continue;
    const auto place = std::find_if(medians.begin(), medians.end(), [&](const Median& median) {
      return median.work == row.work && median.peer == peer.name;
    });
    if (place != medians.end()) {
      place->ratios.push_back(figures.ratios[i]);
    } else {
      medians.push_back({row.work, peer.name, peer.medianBar, {figures.ratios[i]}});
    }
  }
}

int PrintMedians(const std::vector<Median>& medians) {
  int misses = 0;
  for (const Median& median : medians) {
    std::printf("| %s | median of %zu pictures | | %s |\n", median.work.c_str(),
                median.ratios.size(),
                Times(median.peer, MedianOf(median.ratios), median.bar, misses).c_str());
  }
  return misses;
}

long PageFaults() {
  rusage usage;
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_minflt;
}

// The pages that one call touches anew, with an allocator that gives back what it got.
void PrintFaults(const Row& row) {
  row.ours();
  const long before = PageFaults();
  row.ours();
  std::printf("| %s | %s | %ld |\n", row.work.c_str(), row.input.c_str(), PageFaults() - before);
}

// A warm allocator keeps what is freed; the other gives every larger block back at once.
void SetAllocator(bool warm) {
  mallopt(M_MMAP_THRESHOLD, warm ? std::numeric_limits<int>::max() : 65536);
  mallopt(M_TRIM_THRESHOLD, warm ? std::numeric_limits<int>::max() : 65536);
}

const char kUsage[] =
    "compare [--small] [--faults] [--rounds n] [--filter text] [picture...]\n"
    "\n"
    "Times our work and its peers' in turn and prints a table of ratios.\n"
    "\n"
    "  --small        tiny inputs, one round: shows that all of it works\n"
    "  --faults       the memory pages that each call touches anew, in place of times\n"
    "  --rounds n     15 by default\n"
    "  --filter text  only rows whose work and input, with a comma between, have the text\n"
    "  picture        instead of the pictures made here\n";

// For an option that is none, or that lacks its value, the usage is told.
Options Parse(int count, char** arguments) {
  Options options;
  for (int i = 1; i < count; ++i) {
    const char* const argument = arguments[i];
    if (std::strcmp(argument, "--small") == 0) {
      options.setting.small = true;
      options.rounds = 1;
    } else if (std::strcmp(argument, "--faults") == 0) {
      options.faults = true;
    } else if (std::strcmp(argument, "--rounds") == 0 && i + 1 < count) {
      options.rounds = std::max(1, std::atoi(arguments[++i]));
    } else if (std::strcmp(argument, "--filter") == 0 && i + 1 < count) {
      options.filter = arguments[++i];
    } else if (std::strncmp(argument, "--", 2) == 0) {
      const bool asked = std::strcmp(argument, "--help") == 0;
      std::fputs(kUsage, asked ? stdout : stderr);
      std::exit(asked ? 0 : 2);
    } else {
      options.setting.pictures.push_back(argument);
    }
  }
  return options;
}

// On tiny inputs the figures say nothing.
void DropBars(std::vector<Row>& rows) {
  for (Row& row : rows) {
    for (Peer& peer : row.peers) peer.bar = peer.medianBar = 0;
    row.units = 0;
  }
}

bool IsWanted(const Row& row, const std::string& filter) {
  return (row.work + ", " + row.input).find(filter) != std::string::npos;
}

}  // namespace

void Keep(std::size_t result) {
  static volatile std::size_t kept;
  kept = kept + result;
}

int main(int count, char** arguments) {
  const Options options = Parse(count, arguments);
  SetAllocator(!options.faults);
  cv::setNumThreads(1);
  std::vector<Row> rows;
  for (const Family family : kFamilies) family(options.setting, rows);
  if (options.setting.small) DropBars(rows);
  std::puts(options.faults ? "| work | input | page faults |\n|---|---|---|"
                           : "| work | input | µs | times as fast as (bar) |\n|---|---|---|---|");
  int misses = 0;
  std::vector<Median> medians;
  for (const Row& row : rows) {
    if (!IsWanted(row, options.filter)) continue;
    if (row.agree && !row.agree()) {
      std::fprintf(stderr, "%s, %s: results differ\n", row.work.c_str(), row.input.c_str());
      return 1;
    }
    if (options.faults) {
      PrintFaults(row);
    } else {
      const Figures figures = Measure(row, options);
      misses += PrintRow(row, figures);
      Collect(row, figures, medians);
    }
  }
  misses += PrintMedians(medians);
  if (!options.faults) std::printf("\n%d below their bar\n", misses);
  return 0;
}
