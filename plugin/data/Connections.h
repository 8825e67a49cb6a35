#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "plugin/data/ConnectionCell.h"
#include "plugin/data/PairBits.h"

/// The pair matrix, always square. See TShortTestData. To its users a vector of rows.
///
/// It keeps notes on its lower triangle, so that what follows from a finding is found without a walk over the
/// cells. They hold as long as every change goes through `Set`. A reference or an iterator through which a
/// cell can be changed may be kept for as long as its owner likes: from then on the notes serve one
/// propagation at a time and are made anew for the next, which is right whatever was changed meanwhile, but
/// slower. So read through a const reference, and write through `Set`.
class TConnections {
 public:
  using Row = std::vector<TConnectionCell>;
  using Rows = std::vector<Row>;
  using value_type = Row;
  using size_type = Rows::size_type;
  using reference = Rows::reference;
  using const_reference = Rows::const_reference;
  using iterator = Rows::iterator;
  using const_iterator = Rows::const_iterator;

  TConnections() = default;

  /// `count` rows, each like `row`.
  TConnections(std::size_t count, const Row& row) : rows_(count, row) {}

  /// A copy of `rows`. (The rows of a temporary would be cheaper to take over, but a reference to one of
  /// their cells may be kept.)
  TConnections(const Rows& rows) : rows_(rows) {}

  /// No reference into the copy is known to anyone yet.
  TConnections(const TConnections& other) : rows_(other.rows_) {}

  /// References into the rows stay valid and lead into this.
  TConnections(TConnections&& other) noexcept { Swap(other); }

  /// References into the former rows become invalid.
  TConnections& operator=(TConnections other) noexcept {
    Swap(other);
    return *this;
  }

  ~TConnections() = default;

  bool empty() const { return rows_.empty(); }
  std::size_t size() const { return rows_.size(); }
  const Row& operator[](std::size_t row) const { return rows_[row]; }
  const Row& at(std::size_t row) const { return rows_.at(row); }
  const Row& front() const { return rows_.front(); }
  const Row& back() const { return rows_.back(); }
  const_iterator begin() const { return rows_.begin(); }
  const_iterator end() const { return rows_.end(); }
  operator const Rows&() const { return rows_; }  // none that is not const: it would stay with this object

  Row& operator[](std::size_t row) { return HandOut()[row]; }
  Row& at(std::size_t row) { return HandOut().at(row); }
  Row& front() { return HandOut().front(); }
  Row& back() { return HandOut().back(); }
  iterator begin() { return HandOut().begin(); }
  iterator end() { return HandOut().end(); }

  /// Writes one cell, of either half. REQUIRES: both below size().
  void Set(std::size_t row, std::size_t column, const TConnectionCell& cell) {
    rows_[row][column] = cell;
    if (column <= row) notes_.Note(row, column, cell.state);
  }

  /// Before a propagation, in which nothing but `Set` may change cells. Throws std::bad_alloc and has then
  /// changed no cell.
  void BeginPropagation() {
    if (notes_.Channels() != rows_.size()) {
      notes_ = shorttest::PairBits(rows_.size());
    } else if (handedOut_) {
      notes_.Forget();
    }
  }

  /// The notes with those on channels `i` and `j` brought up to date, until the next change that does not go
  /// through `Set`. REQUIRES: BeginPropagation before. Never throws.
  const shorttest::PairBits& NotesOn(std::size_t i, std::size_t j) {
    if (!notes_.IsNoted(i)) NoteChannel(i);
    if (!notes_.IsNoted(j)) NoteChannel(j);
    return notes_;
  }

 private:
  Rows& HandOut() {
    handedOut_ = true;
    return rows_;
  }

  CellState PairState(std::size_t i, std::size_t j) const {
    return i > j ? rows_[i][j].state : rows_[j][i].state;
  }

  void NoteChannel(std::size_t channel);

  void Swap(TConnections& other) noexcept {
    rows_.swap(other.rows_);
    std::swap(notes_, other.notes_);
    std::swap(handedOut_, other.handedOut_);
  }

  Rows rows_;
  shorttest::PairBits notes_;
  bool handedOut_ = false;  // someone may hold a reference through which cells can be changed
};
