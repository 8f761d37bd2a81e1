#pragma once
// The project: everything the alarm module is to hold, plus what only the PC keeps (comments,
// names, station name). The tables are plain text cells addressed like the grids that show them:
// data rows from 1, data columns from 1; row 0 (headers) and column 0 (row numbers) belong to the
// view and are not stored.

#include <array>
#include <string>
#include <vector>

namespace quillon {

// Program-wide limits of the module; set at start-up, the message index raised by identification.
struct ModuleLimits {
  int textMemory = 22272;
  int lastMessageIndex = 99;  // 399 for the module with 400 message texts
  int phoneLimit = 60;
  int blockLength = 64;

  [[nodiscard]] int messageRows() const { return lastMessageIndex + 1; }
};

inline constexpr int kFilterRows = 10;
inline constexpr int kMaxTextLength = 160;
inline constexpr int kMaxCommentLength = 95;
inline constexpr int kMaxPhoneLength = 20;
inline constexpr const char* kNoPin = "____";

class Table {
 public:
  Table(int rows, int columns);

  [[nodiscard]] int rows() const { return m_rows; }
  [[nodiscard]] int columns() const { return m_columns; }
  // Out-of-range cells read as empty and ignore writes, as a grid does for hidden cells.
  [[nodiscard]] const std::string& cell(int row, int column) const;
  void setCell(int row, int column, std::string text);
  // Keeps the cells that still fit.
  void resize(int rows);
  void clear();

  friend bool operator==(const Table&, const Table&) = default;

 private:
  [[nodiscard]] bool inRange(int row, int column) const;
  int m_rows;
  int m_columns;
  std::vector<std::string> m_cells;
};

// Columns of the message table.
inline constexpr int kAckColumn = 1;
inline constexpr int kCallBackColumn = 2;
inline constexpr int kRingColumn = 3;
inline constexpr int kMessageTextColumn = 4;
inline constexpr int kMessageCommentColumn = 5;
// Columns of the filter table.
inline constexpr int kFilterTextColumn = 1;
inline constexpr int kFilterCommentColumn = 2;
// Columns of the phone table.
inline constexpr int kPhoneNumberColumn = 1;
inline constexpr int kPhoneNameColumn = 2;

inline constexpr int kFlagCount = 32;
inline constexpr int kFlagEntries = 101;  // indices 0..100; flags 1..32 are in use
inline constexpr const char* kUnusedFlag = "-1;-1";
inline constexpr const char* kReceptionFlag = "-2;-1";

// The SMS flag assignments: entry i is "message;phone" as typed, "-1;-1" when unused and
// "-2;-1" for the reception flag. `used` is the label colour of flag i (true = yellow).
struct FlagTable {
  std::array<std::string, kFlagEntries> entries;
  std::array<bool, kFlagCount + 1> used{};  // index 0 unused

  FlagTable() { entries.fill(kUnusedFlag); }
  friend bool operator==(const FlagTable&, const FlagTable&) = default;
};

// The two texts that tell the module how to request and recognise a delivery receipt.
struct AckRequest {
  std::string first;
  std::string second;
  friend bool operator==(const AckRequest&, const AckRequest&) = default;
};

struct Project {
  explicit Project(const ModuleLimits& limits = {});

  Table messages;  // columns: ack, call back, ring, text, comment
  Table filters;   // columns: text, comment
  Table phones;    // columns: number, name
  std::string smsCentre;
  std::string pin = kNoPin;
  std::string station;
  std::string phoneSuffix;  // the 20-character field of the "P" record
  AckRequest ack;           // lives for the program's run: clearing the project keeps it
  FlagTable flags;
  bool changed = false;

  friend bool operator==(const Project&, const Project&) = default;
};

// Empties every data cell of the three tables, the PIN ("____") and the station name.
void clearAll(Project& project);
// Every flag entry "-1;-1", every flag label white.
void initMerkerArray(Project& project);
// Follows the module's message capacity: lastMessageIndex + 1 rows.
void applyMessageLimit(Project& project, const ModuleLimits& limits);

}  // namespace quillon
