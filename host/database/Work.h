// What a call of the database does between its lock and its log line: a reference to a function
// object without arguments that returns a status. Nothing is copied, nothing is allocated.
//
// Thread safety: as the function object, which must outlive the call that it is given to.

#ifndef EVENTSYSTEM_HOST_DATABASE_WORK_H
#define EVENTSYSTEM_HOST_DATABASE_WORK_H

namespace EventSystemHost {

class Work {
 public:
  template <class Function>
  Work(const Function& function)
      : m_function(&function),
        m_run([](const void* object) -> int { return (*static_cast<const Function*>(object))(); }) {
  }

  int operator()() const { return m_run(m_function); }

 private:
  const void* m_function;
  int (*m_run)(const void* object);
};

}  // namespace EventSystemHost

#endif
