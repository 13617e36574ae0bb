#include "host/database/TableHandle.h"

#include <utility>

namespace {

constexpr int kFailed = 1;

std::optional<std::string> copied(const char* filter) {
  return filter == nullptr ? std::nullopt : std::make_optional<std::string>(filter);
}

bool isSame(const std::optional<std::string>& known, const char* filter) {
  return filter == nullptr ? !known : known && *known == filter;
}

}  // namespace

OrbDB::CTable::Impl::Impl(std::weak_ptr<EventSystemHost::Database> owner,
                          std::shared_ptr<const EventSystemHost::TableDefinition> definition)
    : database(std::move(owner)), table(std::move(definition)) {}

OrbDB::CTable::Impl::Impl(const Impl& other) : Impl(other.database, other.table) {}

OrbDB::CTable::Impl::~Impl() {
  endWalk();
}

const EventSystemHost::Value* OrbDB::CTable::Impl::value(const char* column) const {
  if (!m_current || column == nullptr) return nullptr;
  const std::optional<std::size_t> index = table->find(column);
  return index ? &m_row[*index] : nullptr;
}

int OrbDB::CTable::Impl::read(const char* key) {
  m_current = false;
  const auto owner = database.lock();
  const int status = owner ? owner->read(*table, key, m_row) : kFailed;
  m_current = status == 0;
  return status;
}

int OrbDB::CTable::Impl::start(const char* filter) {
  endWalk();
  m_current = false;
  m_highestIdRow = HighestIdRow::kNone;
  const auto owner = database.lock();
  if (!owner) return kFailed;
  const int status = owner->startWalk(*table, filter, m_walk, m_row);
  m_current = status == 0;
  m_started = m_current;
  m_filter = copied(filter);
  return status;
}

int OrbDB::CTable::Impl::next(const char* filter) {
  const auto owner = database.lock();
  if (!owner || !m_started || !isSame(m_filter, filter)) return kFailed;
  m_current = false;
  const int status = m_walk ? owner->nextRow(*m_walk, m_row) : kFailed;
  m_current = status == 0;
  if (!m_current) endWalk();
  return status;
}

void OrbDB::CTable::Impl::endWalk() {
  m_started = false;
  if (!m_walk) return;
  if (const auto owner = database.lock()) {
    owner->endWalk(std::move(m_walk));
  } else {
    m_walk.reset();
  }
}

int OrbDB::CTable::Impl::startCounting(const char* filter) {
  if (filter != nullptr || !EventSystemHost::Database::hasHighestIdRow(*table))
    return start(filter);
  return orHighestIdRow([this] {
    const int status = start(nullptr);
    m_highestIdRow = HighestIdRow::kToCome;
    return status;
  });
}

int OrbDB::CTable::Impl::nextCounting(const char* filter) {
  if (m_highestIdRow == HighestIdRow::kNone) return next(filter);
  if (m_highestIdRow == HighestIdRow::kToCome) {
    return orHighestIdRow([this, filter] { return next(filter); });
  }
  m_highestIdRow = HighestIdRow::kNone;
  m_current = false;
  return m_endOfWalk;
}

// What throws has not come to the row.
template <class Step>
int OrbDB::CTable::Impl::orHighestIdRow(const Step& step) {
  const auto owner = database.lock();
  try {
    m_endOfWalk = step();
    if (m_started || !owner) return m_endOfWalk;
    m_row.resize(table->columns.size());
    makeColumns();
    m_current = owner->readHighestIdRow(*table, m_row);
  } catch (...) {
    if (owner) owner->missHighestIdRow();
    throw;
  }
  m_highestIdRow = m_current ? HighestIdRow::kCurrent : HighestIdRow::kNone;
  return m_current ? 0 : m_endOfWalk;
}

void OrbDB::CTable::Impl::makeColumns() {
  if (!m_columns.empty()) return;
  std::vector<std::unique_ptr<CColumn>> made;  // all of them or none
  for (std::size_t i = 0; i < m_row.size(); ++i) {
    auto impl = std::make_unique<CColumn::Impl>(CColumn::Impl{&table->columns[i], &m_row[i]});
    auto column = std::make_unique<CColumn>(impl.get());
    static_cast<void>(impl.release());  // the column's now
    made.push_back(std::move(column));
  }
  m_columns = std::move(made);
}

void OrbDB::CTable::Impl::columns(std::vector<CColumn*>& all) {
  all.clear();
  if (!m_current) return;
  makeColumns();
  for (const auto& column : m_columns) all.push_back(column.get());
}

OrbDB::CColumn* OrbDB::CTable::Impl::column(const char* name) {
  if (!m_current || name == nullptr) return nullptr;
  const std::optional<std::size_t> index = table->find(name);
  if (!index) return nullptr;
  makeColumns();
  return m_columns[*index].get();
}
