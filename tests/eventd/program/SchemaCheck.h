// Whether a value is as a JSON schema says: the part of JSON Schema that the description of the API
// uses. A keyword that is not known here is a problem, too.
//
// Thread safety: pure functions of their arguments.

#ifndef EVENTSYSTEM_TESTS_EVENTD_PROGRAM_SCHEMACHECK_H
#define EVENTSYSTEM_TESTS_EVENTD_PROGRAM_SCHEMACHECK_H

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace EventSystemTest {

// What is wrong, each with its place; references are looked up in `root`.
std::vector<std::string> whyNotValid(const nlohmann::json& value, const nlohmann::json& schema,
                                     const nlohmann::json& root);

}  // namespace EventSystemTest

#endif
