#ifndef COMPARE_COMPARE_H_
#define COMPARE_COMPARE_H_

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

using Work = std::function<void()>;

/// Uses a result, so that no work is left out.
void Keep(std::size_t result);

/// Another way to do the same work.
struct Peer {
  std::string name;
  Work run;
  double bar;            ///< How many times its speed ours must have; 0 to show it only.
  double medianBar = 0;  ///< The same for the median of all rows of the work that have one.
};

/// One line of the table: a work of ours on one input, beside its peers.
struct Row {
  std::string work;
  std::string input;
  Work ours;
  std::vector<Peer> peers;
  /// Whether ours and the peers give the same; asked once, before anything is timed.
  std::function<bool()> agree;

  double units = 0;             ///< How many units ours works through; 0 without a limit a unit.
  std::string unit = "";        ///< What a unit is: "run end".
  double limitNanoseconds = 0;  ///< The most that a unit may take.
};

/// What the rows are made for.
struct Setting {
  bool small = false;                 ///< Tiny inputs: only whether everything works.
  std::vector<std::string> pictures;  ///< Files to take instead of the composed pictures.
};

/// Each family of rows stands in a source of its own and is named in the table of Compare.cpp.
using Family = void (*)(const Setting& setting, std::vector<Row>& rows);

void AddRunRows(const Setting& setting, std::vector<Row>& rows);
void AddComponentRows(const Setting& setting, std::vector<Row>& rows);
void AddOutlineRows(const Setting& setting, std::vector<Row>& rows);
void AddMaskRows(const Setting& setting, std::vector<Row>& rows);
void AddValueRows(const Setting& setting, std::vector<Row>& rows);
void AddRegionRows(const Setting& setting, std::vector<Row>& rows);

#endif  // COMPARE_COMPARE_H_
