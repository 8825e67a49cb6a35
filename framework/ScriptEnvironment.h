#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "framework/PathRules.h"
#include "framework/kxscript.h"

namespace kx {

/// The names of the project's variables. The value of PROJEKTPFAD ends in a path separator, so that
/// PROJEKTPFAD + PROJECTNAME + ".ini" is a file name.
inline constexpr std::string_view ProjectPathVariable = "PROJEKTPFAD";
inline constexpr std::string_view ProjectNameVariable = "PROJECTNAME";

/// The host's script variables, all of them strings.
class KX_API ScriptEnvironment : public TKXEnvironment {
 public:
  explicit ScriptEnvironment(PathRules pathRules = SystemPathRules);
  ~ScriptEnvironment() override;
  ScriptEnvironment(const ScriptEnvironment&) = delete;
  ScriptEnvironment& operator=(const ScriptEnvironment&) = delete;

  /// Sets a variable. Ends what FindVariable returned for it before.
  void SetVariable(std::string_view name, std::string value);

  const TKXValue* FindVariable(const std::string& name) const override;

  /// "\"C:\\project\\a.dat\"" becomes "PROJEKTPFAD + \"a.dat\"". A text that is not one string literal, and a
  /// path that is not below the project path, come back unchanged.
  std::string ReplaceProjectPath(const std::string& quotedPath) const override;

 private:
  PathRules pathRules_;
  std::map<std::string, std::unique_ptr<TStringValue>> variables_;  ///< by name in lower case
};

/// The host's script parser, over an environment that it owns.
class KX_API ScriptParser : public TKXParser {
 public:
  ScriptParser();
  ~ScriptParser() override;

  std::unique_ptr<TKXExpression> ParseExpression(const std::string& text) override;
  ScriptEnvironment& GetEnvironment() override;

 private:
  ScriptEnvironment environment_;
};

}  // namespace kx
