#pragma once
#include <QAnyStringView>
#include <QString>
#include <cstddef>

// Hashing and equality of texts held either as QString or as a list's packed cell (Latin-1 or
// UTF-16), so that a table keyed by QString is searched with a cell without copying it. Equal
// texts hash alike whatever their encoding.
namespace TextKey {

size_t hash(QAnyStringView text) noexcept;
// The text up to its first NUL, as a list shows it.
QAnyStringView shown(QAnyStringView text) noexcept;

// Not noexcept on purpose: the standard tables then keep each key's hash instead of making it
// again for every key they pass.
struct Hash {
    using is_transparent = void;
    size_t operator()(QAnyStringView text) const { return hash(text); }
    size_t operator()(const QString& text) const { return hash(text); }
};

struct Equal {
    using is_transparent = void;
    bool operator()(QAnyStringView a, QAnyStringView b) const noexcept {
        return QAnyStringView::equal(a, b);
    }
};

} // namespace TextKey
