#include "data/points/point_memory.h"

#include <cstdint>
#include <mutex>
#include <new>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace lumoplot {
namespace {

constexpr std::size_t kPieceSize = std::size_t{2} << 20; ///< and its alignment: that of a large page

/// At the front of a piece; the places follow.
struct TPiece {
    static constexpr std::size_t kBegin = 64;

    TPiece* next = nullptr; ///< with free places, too
    TPiece* previous = nullptr;
    void* freed = nullptr;      ///< places that were used before, each with the next one in it
    std::size_t begun = kBegin; ///< behind the places that ever were used
    std::size_t used = 0;

    bool HasPlace(std::size_t bytes) const { return freed != nullptr || begun + bytes <= kPieceSize; }
};
static_assert(sizeof(TPiece) <= TPiece::kBegin);

TPiece* PieceOf(void* place) {
    return reinterpret_cast<TPiece*>(reinterpret_cast<std::uintptr_t>(place) &
                                     ~(static_cast<std::uintptr_t>(kPieceSize) - 1));
}

class TPool {
public:
    explicit TPool(std::size_t bytes) : m_bytes(bytes) {}

    void* Take() {
        const std::lock_guard lock(m_mutex);
        if (m_first == nullptr) Link(MakePiece());
        TPiece* piece = m_first;
        void* place = piece->freed;
        if (place != nullptr) {
            piece->freed = *static_cast<void**>(place);
        } else {
            place = reinterpret_cast<std::byte*>(piece) + piece->begun;
            piece->begun += m_bytes;
        }
        ++piece->used;
        if (!piece->HasPlace(m_bytes)) Unlink(piece);
        return place;
    }

    void Free(void* place) noexcept {
        const std::lock_guard lock(m_mutex);
        TPiece* piece = PieceOf(place);
        if (!piece->HasPlace(m_bytes)) Link(piece);
        *static_cast<void**>(place) = piece->freed;
        piece->freed = place;
        --piece->used;
        const bool isOnly = piece->next == nullptr && piece->previous == nullptr;
        if (piece->used > 0 || isOnly) return;
        Unlink(piece);
        --m_pieces;
        ::operator delete (piece, std::align_val_t{kPieceSize});
    }

private:
    // The first piece is for few points, which are not worth a large page.
    TPiece* MakePiece() {
        void* memory = ::operator new (kPieceSize, std::align_val_t{kPieceSize});
#if defined(__linux__)
        if (m_pieces > 0) madvise(memory, kPieceSize, MADV_HUGEPAGE);
#endif
        ++m_pieces;
        return new (memory) TPiece;
    }

    void Link(TPiece* piece) {
        piece->previous = nullptr;
        piece->next = m_first;
        if (m_first != nullptr) m_first->previous = piece;
        m_first = piece;
    }

    void Unlink(TPiece* piece) {
        if (piece->previous != nullptr) piece->previous->next = piece->next;
        if (piece->next != nullptr) piece->next->previous = piece->previous;
        if (m_first == piece) m_first = piece->next;
        piece->next = piece->previous = nullptr;
    }

    std::size_t m_bytes;
    std::mutex m_mutex;
    TPiece* m_first = nullptr;
    std::size_t m_pieces = 0;
};

// Null for other sizes, and where a checker is to see each array by itself. Points may outlive everything
// else: the pools are never destroyed.
TPool* PoolOf([[maybe_unused]] std::size_t bytes) {
#if !defined(__SANITIZE_ADDRESS__)
    static TPool& arrays = *new TPool(kPooledSizes[0]);
    static TPool& pages = *new TPool(kPooledSizes[1]);
    if (bytes == kPooledSizes[0]) return &arrays;
    if (bytes == kPooledSizes[1]) return &pages;
#endif
    return nullptr;
}

} // namespace

void* TakePointMemory(std::size_t bytes) {
    TPool* pool = PoolOf(bytes);
    return pool != nullptr ? pool->Take() : ::operator new(bytes);
}

void FreePointMemory(void* memory, std::size_t bytes) noexcept {
    TPool* pool = memory != nullptr ? PoolOf(bytes) : nullptr;
    if (pool != nullptr)
        pool->Free(memory);
    else
        ::operator delete(memory);
}

} // namespace lumoplot
