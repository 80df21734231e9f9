#include "core/ListModel.h"

#include "core/Colors.h"

#include <QGuiApplication>
#include <algorithm>
#include <cstring>
#include <numeric>

namespace {
constexpr quint32 kWide = 0x80000000u;

bool fitsOneByte(const QString& s) {
    for (const QChar c : s)
        if (c.unicode() > 0xFF) return false;
    return true;
}
} // namespace

ListModel::PackedCells::PackedCells(const QStringList& cells, int columns) {
    const int n = qMax(0, columns);
    size_t bytes = 0;
    std::vector<bool> wide(static_cast<size_t>(n), false);
    for (int c = 0; c < n && c < cells.size(); ++c) {
        wide[size_t(c)] = !fitsOneByte(cells[c]);
        bytes += size_t(cells[c].size()) * (wide[size_t(c)] ? 2 : 1);
    }
    const size_t words = 1 + size_t(n) + (bytes + 3) / 4;
    m_data.reset(new quint32[words]);
    quint32* head = m_data.get();
    head[0] = quint32(n);
    char* out = reinterpret_cast<char*>(head + 1 + n);
    for (int c = 0; c < n; ++c) {
        const QString cell = c < cells.size() ? cells[c] : QString();
        const auto len = quint32(cell.size());
        if (wide[size_t(c)]) {
            head[1 + c] = len | kWide;
            std::memcpy(out, cell.constData(), size_t(len) * 2);
            out += size_t(len) * 2;
        } else {
            head[1 + c] = len;
            const QChar* in = cell.constData();
            for (quint32 i = 0; i < len; ++i)
                *out++ = char(in[i].unicode());
        }
    }
}

QString ListModel::PackedCells::cell(int column) const {
    if (column < 0 || column >= size()) return {};
    const quint32* head = header();
    const char* p = reinterpret_cast<const char*>(head + 1 + size());
    for (int c = 0; c < column; ++c)
        p += (head[1 + c] & ~kWide) * ((head[1 + c] & kWide) ? 2 : 1);
    const quint32 word = head[1 + column];
    const qsizetype len = qsizetype(word & ~kWide);
    if (!(word & kWide)) return QString::fromLatin1(p, len);
    QString out(len, Qt::Uninitialized);
    std::memcpy(out.data(), p, size_t(len) * 2);
    return out;
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
    packed = PackedCells(cells, columns());
    const QModelIndex i = index(row, column);
    Q_EMIT dataChanged(i, i, {Qt::DisplayRole});
}

void ListModel::setRowTexts(int row, const QStringList& cells) {
    if (row < 0 || row >= count()) return;
    m_rows[size_t(row)].cells = makeRow(cells).cells;
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
    beginInsertRows({}, first, first + int(rows.size()) - 1);
    m_rows.reserve(m_rows.size() + rows.size());
    for (QStringList& cells : rows)
        m_rows.push_back(makeRow(cells));
    endInsertRows();
    if (m_sorted) sortNow();
}

void ListModel::removeRow(int row) {
    if (row < 0 || row >= count()) return;
    beginRemoveRows({}, row, row);
    m_rows.erase(m_rows.begin() + row);
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
    std::vector<Row> kept;
    kept.reserve(m_rows.size() - size_t(removed));
    for (int i = 0; i < count(); ++i) {
        if (i < int(mask.size()) && mask[size_t(i)]) continue;
        if (i == current) keptCurrent = int(kept.size());
        keptSelection.push_back(selected[size_t(i)]);
        kept.push_back(std::move(m_rows[size_t(i)]));
    }
    beginResetModel();
    m_rows = std::move(kept);
    endResetModel();
    restoreSelection(keptSelection, keptCurrent);
}

void ListModel::clear() {
    if (m_rows.empty()) return;
    beginResetModel();
    m_rows.clear();
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
