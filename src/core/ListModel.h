#pragma once
#include <QAbstractTableModel>
#include <QAnyStringView>
#include <QFont>
#include <QItemSelectionModel>
#include <QStringList>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

// The one model behind every list of the program: rows of text cells, each cell with its own
// colour and bold. It also keeps the selection, the focused row and the list's own sorting, so
// that every row routine works without a view. Rows and columns here are 0-based, as in Qt; the
// listview_* routines speak 1-based indexes.
class ListModel : public QAbstractTableModel {
    Q_OBJECT
public:
    static constexpr qint64 DefaultColor = -1; // the list's own text colour

    explicit ListModel(const QStringList& headers, QObject* parent = nullptr);

    // --- Qt model
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation o, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    // --- cells
    int count() const { return int(m_rows.size()); }
    int columns() const { return int(m_headers.size()); }
    const QStringList& headers() const { return m_headers; }
    // Cells are stored packed (see PackedCells), so texts come back by value.
    QString text(int row, int column) const;
    // A cell without a copy, as it is stored: Latin-1 when every character fits in a byte, else
    // UTF-16. Valid until the row changes; searches over 100,000 rows read cells this way.
    QAnyStringView textView(int row, int column) const;
    void setText(int row, int column, const QString& text);
    QStringList rowTexts(int row) const;
    void setRowTexts(int row, const QStringList& cells);

    bool isBold(int row, int column) const;
    void setBold(int row, int column, bool bold);
    qint64 foreColor(int row, int column) const; // COLORREF or DefaultColor
    void setForeColor(int row, int column, qint64 colorRef);
    // Sets bold and colour of every cell of a row at once (one change signal).
    void setRowStyle(int row, bool bold, qint64 colorRef);

    // --- rows
    // Appends (or inserts before `at`, 0-based) one row; a sorted list puts it in its place.
    // Returns the row's index.
    int addRow(const QStringList& cells, int at = -1);
    // Appends many rows with one notification (loading a file of 100,000 rows).
    void appendRows(std::vector<QStringList> rows);
    // The same for `count` rows whose cells `cell(row, column)` gives (row 0 is the first new
    // row), with no list of strings made for each row.
    void appendRows(int count, const std::function<QAnyStringView(int row, int column)>& cell);
    void removeRow(int row);
    // Removes every row whose mask entry is true, in one pass; keeps selection and focus on
    // the rows that stay.
    void removeRows(const std::vector<bool>& mask);
    using QAbstractTableModel::removeRows;
    void clear();
    // Exchanges the cells (texts and styles) of two rows; selection stays where it was.
    void swapRows(int a, int b);

    // --- selection (`Selected`, `SelectedItem`, `MultiSelect`)
    QItemSelectionModel* selectionModel() { return &m_selection; }
    bool isSelected(int row) const;
    void setSelected(int row, bool selected);
    std::vector<bool> selectionMask() const;
    int selectedCount() const;
    bool hasSelection() const { return m_selection.hasSelection(); }
    // The focused row when selected, else the first selected row, else -1.
    int selectedItem() const;
    int currentRow() const { return m_selection.currentIndex().row(); }
    void setCurrentRow(int row);
    void selectAll();
    void clearSelection();
    bool multiSelect() const { return m_multiSelect; }
    // Turning multi-select off keeps only `SelectedItem` selected.
    void setMultiSelect(bool on);
    // Brings a row into view in whatever shows the list.
    void ensureVisible(int row) { Q_EMIT ensureVisibleRequested(row); }

    // --- the list's own sorting: text of the sort column, blind to case; ties keep their order
    bool sorted() const { return m_sorted; }
    void setSorted(bool on);
    int sortKey() const { return m_sortKey; } // column, 0-based (0 is the item's own text)
    void setSortKey(int column);
    int sortOrder() const { return m_sortOrder; } // 0 ascending, 1 descending
    void setSortOrder(int order);
    void sortNow();

    // --- look shared by all rows
    void setFont(const QFont& font);
    const QFont& font() const { return m_font; }
    void setHeaderText(int column, const QString& text);

    // --- the control's `Enabled` and `BackColor`, kept here for whatever shows the list
    bool isEnabled() const { return m_enabled; }
    void setEnabled(bool on) {
        if (m_enabled != on) Q_EMIT enabledChanged(m_enabled = on);
    }
    qint64 backColor() const { return m_backColor; } // COLORREF, system colours included
    void setBackColor(qint64 colorRef) {
        if (m_backColor != colorRef) Q_EMIT backColorChanged(m_backColor = colorRef);
    }

Q_SIGNALS:
    void ensureVisibleRequested(int row);
    void enabledChanged(bool on);
    void backColorChanged(qint64 colorRef);

private:
    struct CellStyle {
        quint32 color = 0; // COLORREF, system colours included
        bool hasColor = false;
        bool bold = false;
    };
    // A row's cells in one block: a length word a cell (top bit: two bytes a character), then
    // the characters, one byte each when every one fits. Rows of 100,000-line lists thus cost
    // one allocation each instead of eight, and half the bytes.
    class PackedCells {
    public:
        PackedCells() = default;
        PackedCells(const QStringList& cells, int columns);
        // `cell(column)` gives each cell's text; `memory(words)` a place in a shared block, or
        // null for a block of the row's own.
        template <typename CellOf, typename Memory>
        PackedCells(int columns, CellOf&& cell, Memory&& memory);
        QString cell(int column) const;
        QAnyStringView view(int column) const;
        QStringList cells() const;
        int size() const { return m_data ? int(m_data[0] & ~PooledBit) : 0; }
        bool pooled() const { return m_data && (m_data[0] & PooledBit); }
        size_t words() const; // the block's length
        // The same cells in a block of their own.
        PackedCells detached() const;

        static constexpr quint32 PooledBit = 0x80000000u;

    private:
        // Frees a block of the row's own; one in a shared block goes with that block.
        struct Release {
            void operator()(quint32* p) const noexcept {
                if (!(p[0] & PooledBit)) delete[] p;
            }
        };
        const quint32* header() const { return m_data.get(); }
        std::unique_ptr<quint32[], Release> m_data; // [count][length word per cell][chars...]
    };
    struct Row {
        PackedCells cells;
        std::unique_ptr<CellStyle[]> style; // null while the row has no style of its own
    };
    Row makeRow(const QStringList& cells) const;
    CellStyle& styleOf(int row, int column);
    int sortedPosition(const QString& key) const;
    void restoreSelection(const std::vector<bool>& mask, int current);
    void reorder(const std::vector<int>& order); // new row i = old row order[i]

    // Rows added in bulk are packed into shared blocks of many rows: one allocation for
    // thousands of rows, and clearing a list frees a few blocks instead of every row.
    quint32* pooledWords(size_t words);
    void leavePool(int rows); // rows of the blocks removed or repacked on their own
    void adoptPooledRows();   // the few rows left in mostly empty blocks move out of them

    QStringList m_headers;
    // Before m_rows: the rows are destroyed first, and a row reads its header to know its block.
    std::vector<std::unique_ptr<quint32[]>> m_blocks;
    static constexpr int kPoolFrom = 64; // rows of one append that share blocks
    size_t m_blockSize = 0;                 // words of the last block
    size_t m_blockFree = 0;                 // words left at the end of the last block
    int m_blockRows = 0;                    // rows ever packed into the current blocks
    int m_pooledRows = 0;                   // of those, the rows still there
    std::vector<Row> m_rows;
    QItemSelectionModel m_selection;
    bool m_multiSelect = true;
    bool m_sorted = false;
    int m_sortKey = 0;
    int m_sortOrder = 0;
    QFont m_font;
    QFont m_boldFont;
    bool m_enabled = true;
    qint64 m_backColor = 0x80000005LL; // the system's window colour
};
