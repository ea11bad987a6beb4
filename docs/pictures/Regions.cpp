// A region's runs and canvas; lists of regions.
#include <string>
#include <vector>

#include "Board.h"
#include "Pictures.h"
#include "VemRegionArray.h"

namespace {

VemRegion RegionOf(int width, int height, const std::vector<PixelRun>& runs) {
  VemVarArray rows, firstColumns, lastColumns;
  for (const PixelRun& run : runs) {
    rows.Append(run.row);
    firstColumns.Append(run.first);
    lastColumns.Append(run.last);
  }
  return VemRegion(width, height, rows, firstColumns, lastColumns);
}

void Show(Board& board, int left, VemRegion region, const std::string& title,
          const std::vector<Ink>& fills, const std::vector<Ink>& frames) {
  constexpr int kTop = 66;
  Grid grid(board, left, kTop, 12, 8, 22);
  board.Text(left, 16, title, kBlack, 12);
  VemVarArray rows, firstColumns, lastColumns;
  region.GetRegionRuns(&rows, &firstColumns, &lastColumns);
  const std::vector<PixelRun> runs = RunsOf(rows, firstColumns, lastColumns);
  for (std::size_t i = 0; i < runs.size(); ++i) {
    grid.Run(runs[i], fills[i % fills.size()], frames[i % frames.size()]);
    board.Text(grid.X(runs[i].first) - 4, grid.Y(runs[i].row) + 4, std::to_string(i), kBlack, 7);
  }
  grid.Canvas(region.Width(), region.Height(), kGrey);
  board.Text(left, 38,
             std::to_string(runs.size()) + " runs, canvas " + std::to_string(region.Width()) +
                 " x " + std::to_string(region.Height()),
             kGrey, 9);
}

}  // namespace

void DrawRegions(const std::string& folder) {
  VemRegion first = RegionOf(8, 5, {{1, 1, 4}, {2, 1, 6}, {3, 3, 6}});
  VemRegion second = RegionOf(11, 7, {{2, 5, 9}, {3, 5, 9}, {5, 2, 3}});
  VemRegionArray array;
  array.Append(first);
  array.Append(second);
  VemRegion both;
  array.Union(&both);

  Board board(960, 260);
  Show(board, 24, first, "array[0]", {kPaleBlue}, {kBlue});
  Show(board, 344, second, "array[1]", {kPaleRed}, {kRed});
  const std::vector<Ink> fills = {kPaleBlue, kPaleBlue, kPaleBlue, kPaleRed, kPaleRed, kPaleRed};
  const std::vector<Ink> frames = {kBlue, kBlue, kBlue, kRed, kRed, kRed};
  Show(board, 664, both, "Union: all runs of both", fills, frames);
  Save(folder, "regions.png", board);
}
