// `eventctl token`: who may use the daemon over the network.

#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>

#include "apps/common/Display.h"
#include "apps/common/EventView.h"
#include "apps/common/Failure.h"
#include "apps/common/Output.h"
#include "apps/common/Table.h"
#include "apps/common/TokenFile.h"
#include "apps/eventctl/Commands.h"
#include "apps/eventctl/DaemonFiles.h"
#include "apps/eventctl/ExitStatus.h"

namespace EventApps {
namespace {

struct TokenOptions {
  std::filesystem::path file;  // empty: that of the home
  std::string name;
  Role role = Role::kRead;
};

std::filesystem::path fileOf(const GlobalOptions& global, const TokenOptions& options) {
  return options.file.empty() ? tokensOfHome(homeOf(global)) : options.file;
}

int runAdd(const GlobalOptions& global, const TokenOptions& options) {
  const auto file = fileOf(global, options);
  std::string token;
  TokenFile::change(file,
                    [&](TokenFile& tokens) { token = tokens.add(options.name, options.role); });
  Output& output = standardOutput();
  if (global.json) {
    output.line(
        jsonLine({{"name", options.name}, {"role", nameOf(options.role)}, {"token", token}}));
  } else {
    output.line(token);
  }
  try {
    output.flush();
  } catch (const OutputError& error) {
    throw Failure("the token " + options.name + " was added to " + file.string() +
                  ", but could not be printed, and is kept nowhere: remove it and add it again: " +
                  error.what());
  }
  return kDone;
}

int runList(const GlobalOptions& global, const TokenOptions& options) {
  const TokenFile file = TokenFile::load(fileOf(global, options));
  Output& output = standardOutput();
  Table table(output,
              {{"name", 20, Align::kLeft, Style::kBold},
               {"role", 5},
               {"added (UTC)", 0, Align::kLeft, Style::kDim}},
              Overflow::kCut);
  for (const Token& token : file.tokens()) {
    if (global.json) {
      output.line(jsonLine(
          {{"name", token.name}, {"role", nameOf(token.role)}, {"created", token.created}}));
    } else {
      table.row({displayText(token.name), nameOf(token.role),
                 token.created == 0 ? "-" : displayTime(token.created, false)});
    }
  }
  if (file.tokens().empty() && !global.json) output.line("No tokens.");
  output.flush();
  return kDone;
}

int runRemove(const GlobalOptions& global, const TokenOptions& options) {
  const auto file = fileOf(global, options);
  TokenFile::change(file, [&](TokenFile& tokens) {
    if (!tokens.remove(options.name)) {
      throw Failure("there is no token " + options.name + " in " + file.string() +
                    "; eventctl token list shows which there are");
    }
  });
  Output& output = standardOutput();
  if (global.json) {
    output.line(jsonLine({{"removed", options.name}}));
  } else {
    output.line("Token " + displayText(options.name) + " removed.");
  }
  output.flush();
  return kDone;
}

void addRole(Command& command, Role& role) {
  command.value(
      "--role", "ROLE", "read: looks; write: also stores and removes\nevents; admin: everything",
      [&role](const std::string& text) -> std::string {
        const auto found = std::find_if(kRoles.begin(), kRoles.end(),
                                        [&](const auto& known) { return known.first == text; });
        if (found == kRoles.end()) return "'" + text + "' is not read, write or admin";
        role = found->second;
        return {};
      },
      Need::kRequired);
}

Command defineTokenCommand(Command& parent, const std::shared_ptr<TokenOptions>& options,
                           const char* name, const char* description, const std::string& example) {
  Command command = parent.add(name, description, example);
  command.text("--file", "FILE", "the file of tokens (default: that of the home)", options->file);
  return command;
}

}  // namespace

void defineToken(Command parent) {
  Command group = parent.add("token", "add, list or remove tokens for the daemon",
                             "token add dashboard --role read");
  group.requireCommand();
  const auto options = std::make_shared<TokenOptions>();
  const GlobalOptions& global = group.global();
  Command add = defineTokenCommand(
      group, options, "add", "make a token and print it",
      "token add dashboard --role read >token\n\n"
      "A token lets whoever shows it use the daemon over the network. It is printed\n"
      "this once: the file keeps what tells it again, not the token.");
  add.text("NAME", "", "who is to have it", options->name, Need::kRequired);
  addRole(add, options->role);
  add.runs([&global, options] { return runAdd(global, *options); });

  Command list = defineTokenCommand(group, options, "list", "list the names and roles of tokens",
                                    "token list");
  list.runs([&global, options] { return runList(global, *options); });

  Command remove =
      defineTokenCommand(group, options, "remove", "remove a token", "token remove dashboard");
  remove.text("NAME", "", "whose it is", options->name, Need::kRequired);
  remove.runs([&global, options] { return runRemove(global, *options); });
}

}  // namespace EventApps
