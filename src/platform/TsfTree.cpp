#include "platform/TsfInternal.h"

namespace tsf {

namespace {
// Below this many children a linear scan is cheaper than building a map.
constexpr std::size_t kIndexThreshold = 16;
}  // namespace

template <typename T>
void NameIndex<T>::Build(const std::vector<std::unique_ptr<T>>& items) const {
  m_map.clear();
  for (const auto& item : items) m_map[item->name].push_back(item.get());
  m_built = true;
}

template <typename T>
T* NameIndex<T>::Find(const std::vector<std::unique_ptr<T>>& items, const std::string& name,
                      int occurrence) const {
  if (occurrence < 1) return nullptr;
  if (items.size() < kIndexThreshold) {
    for (const auto& item : items)
      if (item->name == name && --occurrence == 0) return item.get();
    return nullptr;
  }
  if (!m_built) Build(items);
  auto it = m_map.find(name);
  if (it == m_map.end() || static_cast<std::size_t>(occurrence) > it->second.size()) return nullptr;
  return it->second[occurrence - 1];
}

template <typename T>
int NameIndex<T>::Count(const std::vector<std::unique_ptr<T>>& items, const std::string& name) const {
  if (items.size() < kIndexThreshold) {
    int n = 0;
    for (const auto& item : items) n += item->name == name;
    return n;
  }
  if (!m_built) Build(items);
  auto it = m_map.find(name);
  return it == m_map.end() ? 0 : static_cast<int>(it->second.size());
}

template class NameIndex<Section>;
template class NameIndex<Keyword>;

Section* Section::AddSection(std::string n, int l) {
  sections.push_back(std::make_unique<Section>(file, l, std::move(n), this, depth + 1));
  sectionIndex.Added(sections.back().get());
  order.push_back(sections.back().get());
  return sections.back().get();
}

Keyword* Section::AddKeyword(std::string n, int l) {
  keywords.push_back(std::make_unique<Keyword>(file, l, std::move(n)));
  keywordIndex.Added(keywords.back().get());
  order.push_back(keywords.back().get());
  return keywords.back().get();
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
