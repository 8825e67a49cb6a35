#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace kxbench {

enum class Needed { Yes, No };

/// A word on the command line that is not an option, such as FILE.
struct CommandArgument {
  std::string name;
  std::string description;
  Needed needed;
  std::function<void(const std::string& value)> read;
};

/// An option of a command. Options may stand before the command's name, so one that two commands have must
/// take a value in both or in neither.
struct CommandOption {
  std::string name;  ///< "--format"; with a short form "-o,--output"
  std::string type;  ///< what its value is, "report|records"; empty for an option without a value
  std::string description;
  std::function<void(const std::string& value)>
      read;  ///< throws Failure; called once for each time it is given
  bool repeatable = false;
  bool valueOptional = false;  ///< without one `read` gets an empty text
  bool listed = true;          ///< shown in the command's help
};

/// One of the words that an option takes.
template <typename Choice>
struct ChoiceWord {
  const char* text;
  Choice choice;
};

/// What a command takes on the command line. No value may be empty: the caller of `read` sees to that.
class OptionList {
 public:
  void Argument(const std::string& name, const std::string& description, Needed needed, std::string& target);

  /// An option with a value; the result may be changed until the next one is added.
  CommandOption& Value(const std::string& name, const std::string& type, const std::string& description,
                       std::function<void(const std::string& value)> read);
  CommandOption& Value(const std::string& name, const std::string& type, const std::string& description,
                       std::optional<std::string>& target);

  /// An option without a value.
  CommandOption& Flag(const std::string& name, const std::string& description, bool& target);

  /// An option whose value is one of `words`.
  template <typename Choice, std::size_t Count, typename Target>
  CommandOption& Words(const std::string& name, const ChoiceWord<Choice> (&words)[Count],
                       const std::string& description, Target& target) {
    std::vector<std::string> texts;
    for (const ChoiceWord<Choice>& word : words) texts.emplace_back(word.text);
    return Value(name, Joined(texts), description, [name, texts, &words, &target](const std::string& value) {
      target = words[WordIndex(name, value, texts)].choice;
    });
  }

  /// Shows options in the command's help that every command takes, and this one uses.
  void Show(const std::vector<std::string>& names);

  const std::vector<CommandArgument>& Arguments() const { return arguments_; }
  const std::vector<CommandOption>& Options() const { return options_; }

  /// The option of that name; null when there is none.
  const CommandOption* Find(const std::string& name) const;

 private:
  static std::string Joined(const std::vector<std::string>& words);
  static std::size_t WordIndex(const std::string& option, const std::string& value,
                               const std::vector<std::string>& words);

  std::vector<CommandArgument> arguments_;
  std::vector<CommandOption> options_;
};

}  // namespace kxbench
