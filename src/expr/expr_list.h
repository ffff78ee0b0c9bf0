// The list classes that hold words: an owning list, a borrowing list, and an owning list kept in order with
// binary search, of which the parser's dictionary is one.
#pragma once

#include "expr/expr_word.h"
#include "support/export.h"

#include <memory>
#include <string_view>
#include <vector>

namespace lumoplot {

/// Owns its items. A derived class that overrides FreeItem calls Clear in its destructor.
class TOCollection {
public:
    explicit TOCollection(int capacity);
    virtual ~TOCollection();
    TOCollection(const TOCollection&) = delete;
    TOCollection& operator=(const TOCollection&) = delete;

    int Count() const { return static_cast<int>(m_items.size()); }
    /// `index` from 0 to Count() - 1.
    TExprWord* At(int index) const { return m_items[static_cast<std::size_t>(index)]; }
    auto begin() const { return m_items.begin(); }
    auto end() const { return m_items.end(); }

    void Add(std::unique_ptr<TExprWord> item);
    /// Appends all items of `other` and leaves it empty.
    void Take(TOCollection& other);
    /// Takes the item out of the list without freeing it.
    std::unique_ptr<TExprWord> Extract(int index);
    /// Calls FreeItem on each item, from the first to the last.
    void Clear();

protected:
    virtual void FreeItem(TExprWord* item);

    std::vector<TExprWord*> m_items;
};

/// Borrows its items: they live somewhere else and longer.
class TNoOwnerCollection : public TOCollection {
public:
    using TOCollection::TOCollection;
    ~TNoOwnerCollection() override;

    void Add(TExprWord* item) { m_items.push_back(item); }
    void Add(std::unique_ptr<TExprWord> item) = delete;
    void Take(TOCollection& other) = delete;
    std::unique_ptr<TExprWord> Extract(int index) = delete;

protected:
    void FreeItem(TExprWord*) override {}
};

/// What a sorted list orders by: the item itself, or its name.
struct TWordKey {
    const TExprWord* Item = nullptr;
    std::string_view Name;
};

/// Kept in ascending order of the keys. With Duplicates false (the default) every key is there once.
class TSortedCollection : public TOCollection {
public:
    using TOCollection::TOCollection;

    bool Duplicates() const { return m_duplicates; }
    void SetDuplicates(bool duplicates) { m_duplicates = duplicates; }

    /// Negative, zero or positive, as key1 is before, equal to or behind key2.
    virtual int Compare(const TWordKey& key1, const TWordKey& key2) const = 0;
    /// The position of this very item, or -1. Without Duplicates that of the item with an equal key.
    virtual int IndexOf(const TExprWord* item) const;
    /// Gives the item back when an equal key is there and Duplicates is false; otherwise null.
    virtual std::unique_ptr<TExprWord> Insert(std::unique_ptr<TExprWord> item);
    /// Gives back the item with an equal key that had to go, or null.
    virtual std::unique_ptr<TExprWord> InsertReplacing(std::unique_ptr<TExprWord> item);
    virtual TWordKey KeyOf(const TExprWord* item) const { return {item, {}}; }
    /// True when the key is there. `index` becomes its position (with Duplicates the first such), or the
    /// place where it belongs.
    virtual bool Search(const TWordKey& key, int& index) const;

private:
    bool m_duplicates = false;
};

/// A working list of words, such as the tokens of a formula.
class TExprCollection : public TNoOwnerCollection {
public:
    using TNoOwnerCollection::TNoOwnerCollection;
};

/// The dictionary: words in the order of their names, letter case ignored.
class TExpressList : public TSortedCollection {
public:
    using TSortedCollection::TSortedCollection;

    TWordKey KeyOf(const TExprWord* item) const override { return {item, item->Name()}; }
    int Compare(const TWordKey& key1, const TWordKey& key2) const override;
    /// The word of that name, or null.
    XYGRAPH_EXPORT TExprWord* Find(std::string_view name) const;
};

} // namespace lumoplot
