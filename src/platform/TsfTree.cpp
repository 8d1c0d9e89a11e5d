#include <algorithm>

#include "platform/TsfInternal.h"

namespace tsf {

namespace {
// Below this many children a linear scan is cheaper than building a map.
constexpr std::size_t kIndexThreshold = 16;
// Nodes take a few times the bytes of the text they come from; a first block
// of that size saves the arena most of its later, smaller allocations.
constexpr std::size_t kArenaPerTextByte = 4;
}  // namespace

template <typename T>
void NameIndex<T>::Build(const std::pmr::vector<T*>& items) const {
  m_map.clear();
  for (T* item : items) m_map[item->name].push_back(item);
  m_built = true;
}

template <typename T>
T* NameIndex<T>::Find(const std::pmr::vector<T*>& items, std::string_view name, int occurrence) const {
  if (occurrence < 1) return nullptr;
  if (items.size() < kIndexThreshold) {
    for (T* item : items)
      if (item->name == name && --occurrence == 0) return item;
    return nullptr;
  }
  if (!m_built) Build(items);
  auto it = m_map.find(Text(name, m_map.get_allocator()));
  if (it == m_map.end() || static_cast<std::size_t>(occurrence) > it->second.size()) return nullptr;
  return it->second[occurrence - 1];
}

template <typename T>
int NameIndex<T>::Count(const std::pmr::vector<T*>& items, std::string_view name) const {
  if (items.size() < kIndexThreshold) return static_cast<int>(std::count_if(
      items.begin(), items.end(), [name](const T* item) { return item->name == name; }));
  if (!m_built) Build(items);
  auto it = m_map.find(Text(name, m_map.get_allocator()));
  return it == m_map.end() ? 0 : static_cast<int>(it->second.size());
}

template class NameIndex<Section>;
template class NameIndex<Keyword>;

Param::Param(File* f, int l) : Node(Kind::Param, f, l), text(&f->arena) {}

Keyword::Keyword(File* f, int l, std::string_view n)
    : Node(Kind::Keyword, f, l), name(n, &f->arena), params(&f->arena) {}

Section::Section(File* f, int l, std::string_view n, Section* p, int d)
    : Node(Kind::Section, f, l),
      name(n, &f->arena),
      parent(p),
      depth(d),
      sections(&f->arena),
      keywords(&f->arena),
      order(&f->arena),
      sectionIndex(&f->arena),
      keywordIndex(&f->arena) {}

File::File(std::string p, std::size_t sizeHint)
    : Node(Kind::File, this, 0),
      arena(std::max<std::size_t>(4096, sizeHint * kArenaPerTextByte)),
      path(std::move(p)),
      root(this, 0, "", nullptr, 0) {}

Section* Section::AddSection(std::string_view n, int l) {
  Section* s = file->Make<Section>(file, l, n, this, depth + 1);
  sections.push_back(s);
  sectionIndex.Added(s);
  order.push_back(s);
  return s;
}

Keyword* Section::AddKeyword(std::string_view n, int l) {
  Keyword* k = file->Make<Keyword>(file, l, n);
  keywords.push_back(k);
  keywordIndex.Added(k);
  order.push_back(k);
  return k;
}

bool IsValidName(const char* name) {
  if (!name || !*name) return false;
  auto letter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_'; };
  if (!letter(*name)) return false;
  for (const char* p = name + 1; *p; ++p)
    if (!letter(*p) && !(*p >= '0' && *p <= '9')) return false;
  return true;
}

}  // namespace tsf
