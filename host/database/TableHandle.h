// What a CTable and its CColumns hold.
//
// Thread safety: one thread at a time uses a handle; different handles may be used at once.

#ifndef EVENTSYSTEM_HOST_DATABASE_TABLEHANDLE_H
#define EVENTSYSTEM_HOST_DATABASE_TABLEHANDLE_H

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "EventSystem/platform/OrbDB.h"
#include "host/database/Database.h"

struct __attribute__((visibility("hidden"))) OrbDB::CColumn::Impl {
  const EventSystemHost::ColumnDefinition* definition;
  const EventSystemHost::Value* value;
};

struct __attribute__((visibility("hidden"))) OrbDB::CTable::Impl {
  Impl(std::weak_ptr<EventSystemHost::Database> owner,
       std::shared_ptr<const EventSystemHost::TableDefinition> definition);
  // A handle to the same table, without a current row and a walk.
  Impl(const Impl& other);
  ~Impl();
  Impl& operator=(const Impl&) = delete;

  // NULL when there is no such column or no current row.
  const EventSystemHost::Value* value(const char* column) const;

  // 0 on success; otherwise there is no current row.
  int read(const char* key);
  int start(const char* filter);
  int next(const char* filter);
  void endWalk();

  // The same for the walk that the library finds its ids with: behind the last row, also of a walk
  // that fails, comes that of Database::readHighestIdRow() where the table has one.
  int startCounting(const char* filter);
  int nextCounting(const char* filter);

  // The handle's columns, for its current row.
  void columns(std::vector<CColumn*>& all);
  CColumn* column(const char* name);

  std::weak_ptr<EventSystemHost::Database> database;
  std::shared_ptr<const EventSystemHost::TableDefinition> table;

 private:
  void makeColumns();
  template <class Step>
  int orHighestIdRow(const Step& step);

  EventSystemHost::Row m_row;
  bool m_current = false;
  std::unique_ptr<EventSystemHost::Walk> m_walk;
  bool m_started = false;
  std::optional<std::string> m_filter;
  enum class HighestIdRow { kNone, kToCome, kCurrent };
  HighestIdRow m_highestIdRow = HighestIdRow::kNone;
  int m_endOfWalk = 0;  // its status, while that row is current
  std::vector<std::unique_ptr<CColumn>> m_columns;
};

#endif
