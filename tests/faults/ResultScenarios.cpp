#include <string>

#include "faults/Stage.h"

// Code records and the lists of a scratch inspection.

namespace {

template <typename Record>
void AddRecord(Table& table, const std::string& name) {
  table.push_back({name + ".Construct", [](Stage& s) {
                     Record record = Sample<Record>(1);
                     s.Try([] { Record made; }, Same(record));
                   }});
  table.push_back({name + ".CopyConstruct", [](Stage& s) {
                     Record record = Sample<Record>(1);
                     s.Try([&] { static_cast<void>(Record(record)); }, Same(record));
                   }});
  table.push_back({name + ".Assign", [](Stage& s) {
                     Record record = Sample<Record>(1);
                     Record source = Sample<Record>(2);
                     s.Try([&] { record = source; }, Sound(record), Same(source));
                   }});
}

template <typename List, typename Item>
void AddList(Table& table, const std::string& name) {
  table.push_back({name + ".Construct", [](Stage& s) {
                     List list = Sample<List>(1);
                     s.Try([] { List made; }, Same(list));
                   }});
  table.push_back({name + ".CopyConstruct", [](Stage& s) {
                     List list = Sample<List>(1);
                     s.Try([&] { List copy(list); }, Same(list));
                   }});
  table.push_back({name + ".Assign", [](Stage& s) {
                     List list = Sample<List>(1);
                     List source = Sample<List>(2);
                     s.Try([&] { list = source; }, Sound(list), Same(source));
                   }});
  table.push_back({name + ".AssignItself", [](Stage& s) {
                     List list = Sample<List>(1);
                     List& itself = list;
                     // A group has been copied by then, and its label is assigned to.
                     s.Try([&] { list = itself; }, Sound(list));
                   }});
  table.push_back({name + ".Append", [](Stage& s) {
                     List list = Sample<List>(1);
                     List copy(list);
                     Item item = Sample<Item>(5);
                     s.Try([&] { copy.Append(item); }, AsBefore(copy), Same(list));
                   }});
  table.push_back({name + ".Insert", [](Stage& s) {
                     List list = Sample<List>(1);
                     List copy(list);
                     Item item = Sample<Item>(5);
                     s.Try([&] { copy.Insert(1, item); }, AsBefore(copy), Same(list));
                   }});
  table.push_back({name + ".InsertWithRoom", [](Stage& s) {
                     List list = Sample<List>(1);
                     Item item = Sample<Item>(5);
                     list.Append(item);
                     list.Remove(0);
                     s.Try([&] { list.Insert(0, item); }, Sound(list));
                   }});
  table.push_back({name + ".Remove", [](Stage& s) {
                     List list = Sample<List>(1);
                     s.Try([&] { list.Remove(0); }, Sound(list));
                   }});
  table.push_back({name + ".Clear", [](Stage& s) {
                     List list = Sample<List>(1);
                     s.Try([&] { list.Clear(); }, Sound(list));
                   }});
}

}  // namespace

void AddResults(Table& table) {
  AddRecord<Vem1DCode>(table, "Vem1DCode");
  AddRecord<VemDMCode>(table, "VemDMCode");
  AddRecord<VemQRCode>(table, "VemQRCode");
  AddRecord<VemPDF417Code>(table, "VemPDF417Code");
  AddRecord<VemVCode>(table, "VemVCode");
  AddRecord<VemFeaturePoint>(table, "VemFeaturePoint");
  AddList<VemScratchGroup, VemScratchFeature>(table, "VemScratchGroup");
  AddList<VemScratchLayer, VemScratchGroup>(table, "VemScratchLayer");
  AddList<VemScratchLayerArray, VemScratchLayer>(table, "VemScratchLayerArray");
  table.push_back({"VemScratchGroup.FromLabel", [](Stage& s) {
                     VemVar label = Sample<VemVar>(1);
                     s.Try([&] { VemScratchGroup made(label); }, Same(label));
                   }});
  table.push_back({"VemScratchGroup.Sort", [](Stage& s) {
                     auto group = Sample<VemScratchGroup>(1);
                     s.Try([&] { group.Sort(); }, AsBefore(group));
                   }});
}
