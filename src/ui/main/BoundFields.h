// Controls that stand for columns of a record set, by their tags ("RS=SUPPLIER;FIELDNAME=Town").
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "controls/Controls.h"
#include "store/Row.h"
#include "store/Statements.h"

namespace tarvolinex {

// Two decimals where they hold the whole rate, every digit otherwise; Null is empty, a text that is no number itself.
std::string RateFieldText(const Value& value);

// A field that was edited here while somebody else has stored something else in it, and what the user makes of it.
struct MetField {
  const Control* control = nullptr;  // not owned
  std::string words;                 // as its tab names it
  std::string was, mine, theirs;     // as the field shows them
  // One of some that have to fit each other, as thresholds have to fall: where a mixture would not, they are chosen
  // together.
  bool inOrder = false;
  enum class Choice { Open, Mine, Theirs };
  Choice choice = Choice::Open;
};

// The window's fields of one record set, whichever panel they stand in, and what each of them held when it was loaded.
class BoundFields {
 public:
  // recordSet: as the tags name it. The window must outlive this.
  BoundFields(const Window& window, std::string recordSet) : window_(window), recordSet_(std::move(recordSet)) {}

  // Puts the row's columns into the fields; Null when clearOnly is set or the row was not found. A column that the row
  // lacks leaves its field as it was.
  void Bind(const Row& row, bool clearOnly);

  // Remembers what the fields show now, and what the row holds for them.
  void RememberLoadedFields(const Row& row);
  // What makes the fields remember again what they remember now, for when nothing was stored after all.
  std::function<void()> WayBack() {
    return [this, loaded = loaded_, row = row_] {
      loaded_ = loaded;
      row_ = row;
    };
  }
  // The same of a row that the fields do not show, but are about to replace.
  void RememberRow(const Row& row);
  // The row that was remembered last, with the columns that no field shows.
  const Row& LoadedRow() const { return row_; }

  bool Edited() const;
  // The fields in control order. all false: only those that belong to the default supplier.
  FieldLists Collect(bool all) const;

  // The edited fields in which the row, as it is stored now, no longer holds what was loaded, and holds something else
  // than the field.
  std::vector<MetField> Meet(const Row& now) const { return Meet(now, false); }
  // The same where all fields of the default supplier are about to be stored, edited or not.
  std::vector<MetField> MeetAll(const Row& now) const { return Meet(now, true); }
  // The column of a field of this record set; empty for none.
  std::string ColumnOf(const MetField& met) const;
  // Every field that is chosen as theirs shows what is stored; one that is chosen as mine is from now on an edit of
  // that. Fields of other record sets are left alone.
  void Decide(const Row& now, const std::vector<MetField>& met);
  // Fields that nobody has edited here show what is stored now. Returns whether one has changed.
  bool TakeStored(const Row& now);

 private:
  // What a field showed when it was loaded, and the stored value, also as a statement has it. While the field still
  // reads the same there is nothing to store, and where all fields are stored the value goes back unrounded.
  struct Loaded {
    std::string text, literal;
    Value value;
  };
  // A control that stands for a column: a check box or a text box.
  struct BoundControl {
    std::string column, noDefault;
    CheckBox* check;
    TextBox* box;
    std::string Text() const;
    const Control* Itself() const;
  };
  // The tags of a window do not change: they are read once.
  const std::vector<BoundControl>& Bound() const;
  void Put(const BoundControl& bound, const Row& row, bool clearOnly) const;
  void Remember(const BoundControl& bound, const Row& row, const std::string& text);
  bool IsEdited(const BoundControl& bound) const;
  bool IsStoredAnew(const BoundControl& bound, const Row& now) const;
  MetField Meeting(const BoundControl& bound, const Row& now) const;
  std::vector<MetField> Meet(const Row& now, bool all) const;
  bool OrderIsAtStake(const Row& now, bool all) const;

  const Window& window_;
  std::string recordSet_;
  mutable std::vector<BoundControl> bound_;
  std::map<std::string, Loaded> loaded_;  // by column
  Row row_;
};

}  // namespace tarvolinex
