#include "watcher/Modules.h"

#include <cerrno>
#include <cstring>

namespace watcher {
namespace {

// The loader has added the module's offset to an address of its table, but for a module that it is
// about to read, and for the kernel's own.
template <typename T>
const T* At(const dl_phdr_info& info, ElfW(Addr) address) {
  if (address < info.dlpi_addr) address += info.dlpi_addr;
  return reinterpret_cast<const T*>(address);
}

// A table of chains that begin at their buckets; the last symbol of a chain has the lowest bit set.
std::size_t CountByGnuHash(const std::uint32_t* table) {
  const std::uint32_t buckets = table[0];
  const std::uint32_t first = table[1];
  const std::uint32_t filterWords = table[2];
  const std::uint32_t* const bucket = table + 4 + filterWords * (sizeof(ElfW(Addr)) / 4);
  const std::uint32_t* const chain = bucket + buckets;
  std::uint32_t last = 0;
  for (std::uint32_t i = 0; i < buckets; ++i) {
    if (bucket[i] > last) last = bucket[i];
  }
  if (last < first) return first;
  while ((chain[last - first] & 1) == 0) ++last;
  return last + 1;
}

void ReadTables(const dl_phdr_info& info, const ElfW(Dyn) * entry, Module& module) {
  ElfW(Xword) name = 0;
  for (; entry->d_tag != DT_NULL; ++entry) {
    switch (entry->d_tag) {
      case DT_SYMTAB:
        module.symbols = At<ElfW(Sym)>(info, entry->d_un.d_ptr);
        break;
      case DT_STRTAB:
        module.texts = At<char>(info, entry->d_un.d_ptr);
        break;
      case DT_HASH:
        module.symbolCount = At<std::uint32_t>(info, entry->d_un.d_ptr)[1];
        break;
      case DT_GNU_HASH:
        module.symbolCount = CountByGnuHash(At<std::uint32_t>(info, entry->d_un.d_ptr));
        break;
      case DT_SONAME:
        name = entry->d_un.d_val;
        break;
      default:
        break;
    }
  }
  if (module.symbols == nullptr || module.texts == nullptr) module.symbolCount = 0;
  if (name != 0 && module.texts != nullptr) module.name = module.texts + name;
}

void Read(const dl_phdr_info& info, Module& module) {
  module = Module();
  module.offset = info.dlpi_addr;
  // The program itself has no name here.
  module.file = *info.dlpi_name != '\0' ? info.dlpi_name : program_invocation_name;
  for (int i = 0; i < info.dlpi_phnum; ++i) {
    const ElfW(Phdr)& segment = info.dlpi_phdr[i];
    if (segment.p_type != PT_DYNAMIC) continue;
    ReadTables(info, reinterpret_cast<const ElfW(Dyn)*>(info.dlpi_addr + segment.p_vaddr), module);
  }
}

bool Holds(const dl_phdr_info& info, std::uintptr_t place) {
  for (int i = 0; i < info.dlpi_phnum; ++i) {
    const ElfW(Phdr)& segment = info.dlpi_phdr[i];
    if (segment.p_type != PT_LOAD) continue;
    if (place - info.dlpi_addr - segment.p_vaddr < segment.p_memsz) return true;
  }
  return false;
}

struct Search {
  const void* place;
  const char* name;
  Module& module;
};

int SearchPlace(dl_phdr_info* info, std::size_t, void* search) {
  const Search& wanted = *static_cast<const Search*>(search);
  if (!Holds(*info, reinterpret_cast<std::uintptr_t>(wanted.place))) return 0;
  Read(*info, wanted.module);
  return 1;
}

int SearchName(dl_phdr_info* info, std::size_t, void* search) {
  const Search& wanted = *static_cast<const Search*>(search);
  Read(*info, wanted.module);
  return wanted.module.IsNamed(wanted.name) ? 1 : 0;
}

int ReadUnloads(dl_phdr_info* info, std::size_t, void* unloads) {
  *static_cast<unsigned long long*>(unloads) = info->dlpi_subs;
  return 1;
}

bool IsFunction(const ElfW(Sym) & symbol) {
  const int type = symbol.st_info & 15;
  return symbol.st_shndx != SHN_UNDEF && (type == STT_FUNC || type == STT_NOTYPE);
}

}  // namespace

const ElfW(Sym) * Module::SymbolAt(const void* place) const {
  const std::uintptr_t wanted = reinterpret_cast<std::uintptr_t>(place) - offset;
  for (std::size_t i = 0; i < symbolCount; ++i) {
    const ElfW(Sym)& symbol = symbols[i];
    if (IsFunction(symbol) && wanted - symbol.st_value < symbol.st_size) return &symbol;
  }
  return nullptr;
}

const char* Module::NameAt(const void* place) const {
  const ElfW(Sym)* const symbol = SymbolAt(place);
  return symbol != nullptr ? texts + symbol->st_name : nullptr;
}

const void* Module::BeginAt(const void* place) const {
  const ElfW(Sym)* const symbol = SymbolAt(place);
  return symbol != nullptr ? reinterpret_cast<const void*>(offset + symbol->st_value) : nullptr;
}

void* Module::Find(const char* symbol) const {
  for (std::size_t i = 0; i < symbolCount; ++i) {
    if (IsFunction(symbols[i]) && std::strcmp(texts + symbols[i].st_name, symbol) == 0) {
      return reinterpret_cast<void*>(offset + symbols[i].st_value);
    }
  }
  return nullptr;
}

bool Module::IsNamed(const char* other) const {
  return this->name != nullptr && std::strcmp(this->name, other) == 0;
}

bool FindModule(const void* place, Module& module) {
  Search search = {place, nullptr, module};
  return dl_iterate_phdr(&SearchPlace, &search) != 0;
}

bool FindLibrary(const char* name, Module& module) {
  Search search = {nullptr, name, module};
  return dl_iterate_phdr(&SearchName, &search) != 0;
}

unsigned long long Unloads() {
  unsigned long long unloads = 0;
  dl_iterate_phdr(&ReadUnloads, &unloads);
  return unloads;
}

}  // namespace watcher
