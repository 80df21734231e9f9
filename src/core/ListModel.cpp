#include "core/ListModel.h"

#include "core/Colors.h"

#include <QGuiApplication>
#include <QVarLengthArray>
#include <algorithm>
#include <cstring>
#include <numeric>

namespace {
constexpr quint32 kWide = 0x80000000u;

// A cell to pack: Latin-1 or UTF-16 (a UTF-8 view is made UTF-16 first).
struct Source {
    const void* data = nullptr;
    qsizetype size = 0;
    bool latin1 = true; // the data are bytes
    bool wide = false;  // some character needs two bytes
};

// `keep` holds converted texts while the row is packed (moving a QString keeps its characters).
Source sourceOf(QAnyStringView text, QStringList& keep) {
    Source s;
    text.visit([&](auto v) {
        using V = decltype(v);
        if constexpr (std::is_same_v<V, QLatin1StringView>) {
            s = {v.data(), v.size(), true, false};
        } else if constexpr (std::is_same_v<V, QStringView>) {
            s = {v.data(), v.size(), false, !QtPrivate::isLatin1(v)};
        } else {
            keep.append(v.toString());
            const QString& k = keep.constLast();
            s = {k.constData(), k.size(), false, !QtPrivate::isLatin1(QStringView(k))};
        }
    });
    return s;
}
} // namespace

// Wide cells come first so that their characters start on an even byte; narrow ones follow.
template <typename CellOf, typename Memory>
ListModel::PackedCells::PackedCells(int columns, CellOf&& cellOf, Memory&& memory) {
    const int n = qMax(0, columns);
    QVarLengthArray<Source, 16> sources(n);
    QStringList kept;
    size_t wideBytes = 0, narrowBytes = 0;
    for (int c = 0; c < n; ++c) {
        sources[c] = sourceOf(cellOf(c), kept);
        (sources[c].wide ? wideBytes : narrowBytes) +=
            size_t(sources[c].size) * (sources[c].wide ? 2 : 1);
    }
    const size_t words = 1 + size_t(n) + (wideBytes + narrowBytes + 3) / 4;
    quint32* head = memory(words);
    const bool pooled = head != nullptr;
    if (!pooled) head = new quint32[words];
    head[0] = quint32(n) | (pooled ? PooledBit : 0);
    m_data.reset(head);
    char* wideOut = reinterpret_cast<char*>(head + 1 + n);
    char* narrowOut = wideOut + wideBytes;
    for (int c = 0; c < n; ++c) {
        const Source& s = sources[c];
        const auto len = size_t(s.size);
        head[1 + c] = quint32(len) | (s.wide ? kWide : 0);
        if (s.wide) {
            std::memcpy(wideOut, s.data, len * 2);
            wideOut += len * 2;
        } else if (s.latin1) {
            if (len) std::memcpy(narrowOut, s.data, len);
            narrowOut += len;
        } else {
            const auto* in = static_cast<const char16_t*>(s.data);
            for (size_t i = 0; i < len; ++i)
                *narrowOut++ = char(in[i]);
        }
    }
}

ListModel::PackedCells::PackedCells(const QStringList& cells, int columns)
    : PackedCells(
          columns,
          [&cells](int c) {
              return c < cells.size() ? QAnyStringView(cells[c])
                                      : QAnyStringView(QLatin1StringView());
          },
          [](size_t) -> quint32* { return nullptr; }) {}

size_t ListModel::PackedCells::words() const {
    if (!m_data) return 0;
    const int n = size();
    size_t bytes = 0;
    for (int c = 0; c < n; ++c) {
        const quint32 word = m_data[size_t(1 + c)];
        bytes += size_t(word & ~kWide) * ((word & kWide) ? 2 : 1);
    }
    return 1 + size_t(n) + (bytes + 3) / 4;
}

ListModel::PackedCells ListModel::PackedCells::detached() const {
    PackedCells out;
    if (!m_data) return out;
    const size_t n = words();
    auto* copy = new quint32[n];
    std::memcpy(copy, m_data.get(), n * sizeof(quint32));
    copy[0] &= ~PooledBit;
    out.m_data.reset(copy);
    return out;
}

QAnyStringView ListModel::PackedCells::view(int column) const {
    if (column < 0 || column >= size()) return QLatin1StringView();
    const int n = size();
    const quint32* head = header();
    const bool wide = head[1 + column] & kWide;
    size_t before = 0;
    for (int c = 0; c < n; ++c) {
        const quint32 word = head[1 + c];
        if (word & kWide) {
            if (!wide || c < column) before += size_t(word & ~kWide) * 2;
        } else if (!wide && c < column) {
            before += word;
        }
    }
    const char* p = reinterpret_cast<const char*>(head + 1 + n) + before;
    const qsizetype len = qsizetype(head[1 + column] & ~kWide);
    if (!wide) return QLatin1StringView(p, len);
    return QStringView(reinterpret_cast<const char16_t*>(p), len);
}

QString ListModel::PackedCells::cell(int column) const {
    return view(column).toString();
}

QStringList ListModel::PackedCells::cells() const {
    QStringList out;
    out.reserve(size());
    for (int c = 0; c < size(); ++c)
        out.append(cell(c));
    return out;
}

ListModel::ListModel(const QStringList& headers, QObject* parent)
    : QAbstractTableModel(parent), m_headers(headers), m_selection(this) {
    setFont(m_font);
}

int ListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count();
}

int ListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : columns();
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= count() || index.column() >= columns()) return {};
    const Row& r = m_rows[size_t(index.row())];
    switch (role) {
    case Qt::DisplayRole: {
        // A list control's text ends at a NUL; tags padded with NULs keep them in the cell.
        const QString text = r.cells.cell(index.column());
        const qsizetype nul = text.indexOf(QChar(0));
        return nul < 0 ? text : text.left(nul);
    }
    case Qt::EditRole:
    case Qt::AccessibleTextRole:
    case Qt::ToolTipRole:
        return r.cells.cell(index.column());
    case Qt::ForegroundRole:
        if (r.style && r.style[size_t(index.column())].hasColor)
            return Colors::fromColorRef(r.style[size_t(index.column())].color,
                                        QGuiApplication::palette());
        return {};
    case Qt::FontRole:
        if (r.style && r.style[size_t(index.column())].bold) return m_boldFont;
        return {};
    default:
        return {};
    }
}

QVariant ListModel::headerData(int section, Qt::Orientation o, int role) const {
    if (o == Qt::Horizontal && (role == Qt::DisplayRole || role == Qt::AccessibleTextRole))
        return m_headers.value(section);
    return {};
}

Qt::ItemFlags ListModel::flags(const QModelIndex& index) const {
    if (!index.isValid()) return Qt::ItemIsDropEnabled;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled |
           Qt::ItemNeverHasChildren;
}

QString ListModel::text(int row, int column) const {
    if (row < 0 || row >= count()) return {};
    return m_rows[size_t(row)].cells.cell(column);
}

QAnyStringView ListModel::textView(int row, int column) const {
    if (row < 0 || row >= count()) return QLatin1StringView();
    return m_rows[size_t(row)].cells.view(column);
}

QStringList ListModel::rowTexts(int row) const {
    if (row < 0 || row >= count()) return {};
    return m_rows[size_t(row)].cells.cells();
}

void ListModel::setText(int row, int column, const QString& text) {
    if (row < 0 || row >= count() || column < 0 || column >= columns()) return;
    PackedCells& packed = m_rows[size_t(row)].cells;
    QStringList cells = packed.cells();
    if (cells[column] == text) return;
    cells[column] = text;
    const bool wasPooled = packed.pooled();
    packed = PackedCells(cells, columns());
    if (wasPooled) leavePool(1);
    const QModelIndex i = index(row, column);
    Q_EMIT dataChanged(i, i, {Qt::DisplayRole});
}

void ListModel::setRowTexts(int row, const QStringList& cells) {
    if (row < 0 || row >= count()) return;
    const bool wasPooled = m_rows[size_t(row)].cells.pooled();
    m_rows[size_t(row)].cells = makeRow(cells).cells;
    if (wasPooled) leavePool(1);
    Q_EMIT dataChanged(index(row, 0), index(row, columns() - 1), {Qt::DisplayRole});
}

ListModel::Row ListModel::makeRow(const QStringList& cells) const {
    Row r;
    r.cells = PackedCells(cells, columns());
    return r;
}

ListModel::CellStyle& ListModel::styleOf(int row, int column) {
    Row& r = m_rows[size_t(row)];
    if (!r.style) r.style.reset(new CellStyle[size_t(columns())]);
    return r.style[size_t(column)];
}

bool ListModel::isBold(int row, int column) const {
    if (row < 0 || row >= count() || column < 0 || column >= columns()) return false;
    const Row& r = m_rows[size_t(row)];
    return r.style && r.style[size_t(column)].bold;
}

void ListModel::setBold(int row, int column, bool bold) {
    if (row < 0 || row >= count() || column < 0 || column >= columns() ||
        isBold(row, column) == bold)
        return;
    styleOf(row, column).bold = bold;
    const QModelIndex i = index(row, column);
    Q_EMIT dataChanged(i, i, {Qt::FontRole});
}

qint64 ListModel::foreColor(int row, int column) const {
    if (row < 0 || row >= count() || column < 0 || column >= columns()) return DefaultColor;
    const Row& r = m_rows[size_t(row)];
    if (!r.style || !r.style[size_t(column)].hasColor) return DefaultColor;
    return r.style[size_t(column)].color;
}

void ListModel::setForeColor(int row, int column, qint64 colorRef) {
    if (row < 0 || row >= count() || column < 0 || column >= columns() ||
        foreColor(row, column) == colorRef)
        return;
    CellStyle& style = styleOf(row, column);
    style.hasColor = colorRef != DefaultColor;
    style.color = style.hasColor ? quint32(colorRef) : 0;
    const QModelIndex i = index(row, column);
    Q_EMIT dataChanged(i, i, {Qt::ForegroundRole});
}

void ListModel::setRowStyle(int row, bool bold, qint64 colorRef) {
    if (row < 0 || row >= count()) return;
    if (!bold && colorRef == DefaultColor) {
        m_rows[size_t(row)].style.reset(); // plain rows carry no style block
    } else {
        for (int c = 0; c < columns(); ++c) {
            CellStyle& s = styleOf(row, c);
            s.bold = bold;
            s.hasColor = colorRef != DefaultColor;
            s.color = s.hasColor ? quint32(colorRef) : 0;
        }
    }
    Q_EMIT dataChanged(index(row, 0), index(row, columns() - 1),
                       {Qt::FontRole, Qt::ForegroundRole});
}

int ListModel::sortedPosition(const QString& key) const {
    // First position whose key sorts after `key` (upper bound), in the current order.
    const QString folded = key.toCaseFolded();
    int lo = 0, hi = count();
    while (lo < hi) {
        const int mid = (lo + hi) / 2;
        const QString other = text(mid, m_sortKey).toCaseFolded();
        const bool after = m_sortOrder == 0 ? other > folded : other < folded;
        if (after)
            hi = mid;
        else
            lo = mid + 1;
    }
    return lo;
}

int ListModel::addRow(const QStringList& cells, int at) {
    int pos = at < 0 || at > count() ? count() : at;
    if (m_sorted) pos = sortedPosition(cells.value(m_sortKey));
    beginInsertRows({}, pos, pos);
    m_rows.insert(m_rows.begin() + pos, makeRow(cells));
    endInsertRows();
    return pos;
}

void ListModel::appendRows(std::vector<QStringList> rows) {
    if (rows.empty()) return;
    const int first = count();
    const int n = columns();
    const bool pool = rows.size() >= size_t(kPoolFrom);
    beginInsertRows({}, first, first + int(rows.size()) - 1);
    m_rows.reserve(m_rows.size() + rows.size());
    for (const QStringList& cells : rows) {
        Row row;
        row.cells = PackedCells(
            n,
            [&cells](int c) {
                return c < cells.size() ? QAnyStringView(cells[c])
                                        : QAnyStringView(QLatin1StringView());
            },
            [this, pool](size_t words) { return pool ? pooledWords(words) : nullptr; });
        m_rows.push_back(std::move(row));
    }
    endInsertRows();
    if (m_sorted) sortNow();
}

void ListModel::appendRows(int count,
                           const std::function<QAnyStringView(int row, int column)>& cell) {
    if (count <= 0) return;
    const int first = this->count();
    const int n = columns();
    const bool pool = count >= kPoolFrom;
    beginInsertRows({}, first, first + count - 1);
    m_rows.reserve(m_rows.size() + size_t(count));
    for (int r = 0; r < count; ++r) {
        Row row;
        row.cells = PackedCells(
            n, [&](int c) { return cell(r, c); },
            [this, pool](size_t words) { return pool ? pooledWords(words) : nullptr; });
        m_rows.push_back(std::move(row));
    }
    endInsertRows();
    if (m_sorted) sortNow();
}

quint32* ListModel::pooledWords(size_t words) {
    // Blocks grow from 4 KiB to 256 KiB, so that a short list holds little memory.
    constexpr size_t kLargest = 64 * 1024;
    if (words > kLargest / 16) return nullptr; // a long row keeps a block of its own
    if (words > m_blockFree) {
        const size_t size = m_blocks.empty() ? 1024 : qMin(kLargest, m_blockSize * 2);
        m_blocks.emplace_back(new quint32[size]);
        m_blockSize = size;
        m_blockFree = size;
    }
    quint32* at = m_blocks.back().get() + (m_blockSize - m_blockFree);
    m_blockFree -= words;
    ++m_blockRows;
    ++m_pooledRows;
    return at;
}

void ListModel::leavePool(int rows) {
    m_pooledRows -= rows;
    if (m_pooledRows <= 0) {
        m_blocks.clear();
        m_blockFree = m_blockSize = 0;
        m_blockRows = m_pooledRows = 0;
    } else if (m_blockRows >= 4 * kPoolFrom && m_pooledRows * 4 < m_blockRows) {
        adoptPooledRows();
    }
}

void ListModel::adoptPooledRows() {
    for (Row& r : m_rows)
        if (r.cells.pooled()) r.cells = r.cells.detached();
    m_blocks.clear();
    m_blockFree = m_blockSize = 0;
    m_blockRows = m_pooledRows = 0;
}

void ListModel::removeRow(int row) {
    if (row < 0 || row >= count()) return;
    const bool wasPooled = m_rows[size_t(row)].cells.pooled();
    beginRemoveRows({}, row, row);
    m_rows.erase(m_rows.begin() + row);
    if (wasPooled) leavePool(1);
    endRemoveRows();
}

void ListModel::removeRows(const std::vector<bool>& mask) {
    int removed = 0;
    for (int i = 0; i < count() && i < int(mask.size()); ++i)
        removed += mask[size_t(i)];
    if (removed == 0) return;
    if (removed == 1) {
        for (int i = 0; i < count(); ++i)
            if (mask[size_t(i)]) return removeRow(i);
    }
    std::vector<bool> selected = selectionMask();
    const int current = currentRow();
    std::vector<bool> keptSelection;
    int keptCurrent = -1;
    int pooledGone = 0;
    std::vector<Row> kept;
    kept.reserve(m_rows.size() - size_t(removed));
    for (int i = 0; i < count(); ++i) {
        if (i < int(mask.size()) && mask[size_t(i)]) {
            pooledGone += m_rows[size_t(i)].cells.pooled();
            continue;
        }
        if (i == current) keptCurrent = int(kept.size());
        keptSelection.push_back(selected[size_t(i)]);
        kept.push_back(std::move(m_rows[size_t(i)]));
    }
    beginResetModel();
    m_rows = std::move(kept);
    if (pooledGone) leavePool(pooledGone);
    endResetModel();
    restoreSelection(keptSelection, keptCurrent);
}

void ListModel::clear() {
    if (m_rows.empty()) return;
    beginResetModel();
    m_rows.clear();
    if (m_pooledRows) leavePool(m_pooledRows);
    endResetModel();
    m_selection.clear();
}

void ListModel::swapRows(int a, int b) {
    if (a == b || a < 0 || b < 0 || a >= count() || b >= count()) return;
    std::swap(m_rows[size_t(a)], m_rows[size_t(b)]);
    Q_EMIT dataChanged(index(a, 0), index(a, columns() - 1));
    Q_EMIT dataChanged(index(b, 0), index(b, columns() - 1));
}

bool ListModel::isSelected(int row) const {
    return row >= 0 && row < count() && m_selection.isSelected(index(row, 0));
}

void ListModel::setSelected(int row, bool selected) {
    if (row < 0 || row >= count() || isSelected(row) == selected) return;
    if (selected && !m_multiSelect) {
        m_selection.setCurrentIndex(index(row, 0), QItemSelectionModel::ClearAndSelect |
                                                       QItemSelectionModel::Rows);
        return;
    }
    if (selected) {
        m_selection.setCurrentIndex(index(row, 0),
                                    QItemSelectionModel::Select | QItemSelectionModel::Rows);
    } else {
        m_selection.select(index(row, 0),
                           QItemSelectionModel::Deselect | QItemSelectionModel::Rows);
    }
}

std::vector<bool> ListModel::selectionMask() const {
    std::vector<bool> mask(size_t(count()), false);
    for (const QItemSelectionRange& r : m_selection.selection())
        for (int i = qMax(0, r.top()); i <= r.bottom() && i < count(); ++i)
            mask[size_t(i)] = true;
    return mask;
}

int ListModel::selectedCount() const {
    int n = 0;
    for (bool b : selectionMask())
        n += b;
    return n;
}

int ListModel::selectedItem() const {
    const int cur = currentRow();
    if (cur >= 0 && isSelected(cur)) return cur;
    int first = -1;
    for (const QItemSelectionRange& r : m_selection.selection())
        if (first < 0 || r.top() < first) first = r.top();
    return first < count() ? first : -1;
}

void ListModel::setCurrentRow(int row) {
    if (row < 0 || row >= count()) return;
    m_selection.setCurrentIndex(index(row, 0), QItemSelectionModel::NoUpdate);
}

void ListModel::selectAll() {
    if (count() == 0) return;
    m_selection.select(QItemSelection(index(0, 0), index(count() - 1, columns() - 1)),
                       QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

void ListModel::clearSelection() {
    m_selection.clearSelection();
}

void ListModel::setMultiSelect(bool on) {
    if (m_multiSelect == on) return;
    m_multiSelect = on;
    if (!on) {
        const int keep = selectedItem();
        m_selection.clearSelection();
        if (keep >= 0) setSelected(keep, true);
    }
}

void ListModel::restoreSelection(const std::vector<bool>& mask, int current) {
    QItemSelection sel;
    const int n = qMin(count(), int(mask.size()));
    for (int i = 0; i < n;) {
        if (!mask[size_t(i)]) {
            ++i;
            continue;
        }
        int j = i;
        while (j + 1 < n && mask[size_t(j + 1)])
            ++j;
        sel.select(index(i, 0), index(j, columns() - 1));
        i = j + 1;
    }
    m_selection.clear();
    if (current >= 0 && current < count())
        m_selection.setCurrentIndex(index(current, 0), QItemSelectionModel::NoUpdate);
    if (!sel.isEmpty()) m_selection.select(sel, QItemSelectionModel::Select);
}

void ListModel::reorder(const std::vector<int>& order) {
    const std::vector<bool> selected = selectionMask();
    const int current = currentRow();
    std::vector<Row> rows;
    rows.reserve(m_rows.size());
    std::vector<bool> newSelection(order.size());
    int newCurrent = -1;
    for (size_t i = 0; i < order.size(); ++i) {
        rows.push_back(std::move(m_rows[size_t(order[i])]));
        newSelection[i] = selected[size_t(order[i])];
        if (order[i] == current) newCurrent = int(i);
    }
    Q_EMIT layoutAboutToBeChanged();
    m_rows = std::move(rows);
    Q_EMIT layoutChanged();
    restoreSelection(newSelection, newCurrent);
}

void ListModel::sortNow() {
    if (count() < 2) return;
    std::vector<QString> keys(m_rows.size());
    for (size_t i = 0; i < m_rows.size(); ++i)
        keys[i] = text(int(i), m_sortKey).toCaseFolded();
    std::vector<int> order(m_rows.size());
    std::iota(order.begin(), order.end(), 0);
    if (m_sortOrder == 0)
        std::stable_sort(order.begin(), order.end(),
                         [&](int a, int b) { return keys[size_t(a)] < keys[size_t(b)]; });
    else
        std::stable_sort(order.begin(), order.end(),
                         [&](int a, int b) { return keys[size_t(b)] < keys[size_t(a)]; });
    if (std::is_sorted(order.begin(), order.end())) return;
    reorder(order);
}

void ListModel::setSorted(bool on) {
    m_sorted = on;
    if (on) sortNow();
}

void ListModel::setSortKey(int column) {
    m_sortKey = qBound(0, column, qMax(0, columns() - 1));
    if (m_sorted) sortNow();
}

void ListModel::setSortOrder(int order) {
    m_sortOrder = order == 1 ? 1 : 0;
    if (m_sorted) sortNow();
}

void ListModel::setFont(const QFont& font) {
    m_font = font;
    m_boldFont = font;
    m_boldFont.setBold(true);
    if (count() > 0)
        Q_EMIT dataChanged(index(0, 0), index(count() - 1, columns() - 1), {Qt::FontRole});
}

void ListModel::setHeaderText(int column, const QString& text) {
    if (column < 0 || column >= columns()) return;
    m_headers[column] = text;
    Q_EMIT headerDataChanged(Qt::Horizontal, column, column);
}
