#include "expr/expr_list.h"

#include <algorithm>

namespace lumoplot {
namespace {

int LowerCase(char c) {
    const int code = static_cast<unsigned char>(c);
    return code >= 'A' && code <= 'Z' ? code - 'A' + 'a' : code;
}

} // namespace

TOCollection::TOCollection(int capacity) {
    m_items.reserve(static_cast<std::size_t>(std::max(capacity, 0)));
}

TOCollection::~TOCollection() {
    TOCollection::Clear();
}

void TOCollection::Add(std::unique_ptr<TExprWord> item) {
    m_items.push_back(item.get());
    item.release();
}

void TOCollection::Take(TOCollection& other) {
    m_items.insert(m_items.end(), other.m_items.begin(), other.m_items.end());
    other.m_items.clear();
}

std::unique_ptr<TExprWord> TOCollection::Extract(int index) {
    std::unique_ptr<TExprWord> item(At(index));
    m_items.erase(m_items.begin() + index);
    return item;
}

void TOCollection::Clear() {
    for (TExprWord* item : m_items) FreeItem(item);
    m_items.clear();
}

void TOCollection::FreeItem(TExprWord* item) {
    std::unique_ptr<TExprWord>(item).reset();
}

TNoOwnerCollection::~TNoOwnerCollection() {
    Clear();
}

int TSortedCollection::IndexOf(const TExprWord* item) const {
    int index = 0;
    if (!Search(KeyOf(item), index)) return -1;
    if (!m_duplicates) return index;
    while (index < Count() && At(index) != item) ++index;
    return index < Count() ? index : -1;
}

std::unique_ptr<TExprWord> TSortedCollection::Insert(std::unique_ptr<TExprWord> item) {
    int index = 0;
    if (Search(KeyOf(item.get()), index) && !m_duplicates) return item;
    m_items.insert(m_items.begin() + index, item.get());
    item.release();
    return nullptr;
}

std::unique_ptr<TExprWord> TSortedCollection::InsertReplacing(std::unique_ptr<TExprWord> item) {
    int index = 0;
    std::unique_ptr<TExprWord> replaced;
    if (Search(KeyOf(item.get()), index)) replaced = Extract(index);
    Insert(std::move(item));
    return replaced;
}

bool TSortedCollection::Search(const TWordKey& key, int& index) const {
    bool found = false;
    int low = 0;
    int high = Count() - 1;
    while (low <= high) {
        const int middle = (low + high) / 2;
        const int order = Compare(KeyOf(At(middle)), key);
        if (order < 0) {
            low = middle + 1;
            continue;
        }
        high = middle - 1;
        if (order == 0) {
            found = true;
            if (!m_duplicates) low = middle;
        }
    }
    index = low;
    return found;
}

int TExpressList::Compare(const TWordKey& key1, const TWordKey& key2) const {
    const std::size_t common = std::min(key1.Name.size(), key2.Name.size());
    for (std::size_t i = 0; i < common; ++i)
        if (const int order = LowerCase(key1.Name[i]) - LowerCase(key2.Name[i])) return order;
    return (key1.Name.size() > common) - (key2.Name.size() > common);
}

TExprWord* TExpressList::Find(std::string_view name) const {
    int index = 0;
    return Search({nullptr, name}, index) ? At(index) : nullptr;
}

} // namespace lumoplot
