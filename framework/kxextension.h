#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "contracts/Export.h"
#include "framework/kxcommon.h"

class TKXFuncRunEdit;
class TKXParser;

/// Host package kxextension: how an extension describes itself to the host.

/// A command class, through which the host makes commands without knowing their type: the virtual
/// constructor `Create(Parser)`. One static instance a command class, owned by the extension.
class KX_API TKXCommandClass {
 public:
  virtual ~TKXCommandClass();

  /// Name of the class, for messages.
  virtual std::string ClassName() const = 0;

  /// Makes a command of this class. The caller owns it and deletes it before it unloads the extension.
  virtual TKXFuncRunEdit* Create(TKXParser* parser) const = 0;
};

/// Describes one command class to the host. `flags` is the host's own; extensions pass 1.
class KX_API TKXFuncRunEditExport {
 public:
  TKXFuncRunEditExport(const TKXCommandClass& commandClass, TKXParser* parser, std::uint32_t flags);

  const TKXCommandClass& CommandClass() const { return *commandClass_; }
  TKXParser* Parser() const { return parser_; }
  std::uint32_t Flags() const { return flags_; }

  /// Makes a command of the described class, with the described parser, through its virtual constructor.
  std::unique_ptr<TKXFuncRunEdit> CreateCommand() const;

 private:
  const TKXCommandClass* commandClass_;
  TKXParser* parser_;
  std::uint32_t flags_;
};

/// What the host keeps of an extension. The host owns the object that an extension's entry returned.
class KX_API TExtensionInfo {
 public:
  TExtensionInfo();
  ~TExtensionInfo();
  TExtensionInfo(const TExtensionInfo&) = delete;
  TExtensionInfo& operator=(const TExtensionInfo&) = delete;

  std::string Name;
  std::string Description;
  std::vector<std::unique_ptr<TKXFuncRunEditExport>> Commands;
  std::string CommandDefinitionFile;  ///< relative to the host's installation
};

/// Type of the one function an extension exports, `__getExtensionInfo`. Called once, after loading, on the
/// user-interface thread; the host owns the result.
using TGetExtensionInfo = TExtensionInfo* (*)(const TKXHashTable& hostValues);

/// Type of the host value "BreInit": brings the tester hardware into a usable state. Throws on failure.
using TBreInit = void (*)();
