#include "framework/kxextension.h"

#include "framework/kxcomponents.h"

TKXCommandClass::~TKXCommandClass() = default;

TKXFuncRunEditExport::TKXFuncRunEditExport(const TKXCommandClass& commandClass, TKXParser* parser,
                                           std::uint32_t flags)
    : commandClass_(&commandClass), parser_(parser), flags_(flags) {}

std::unique_ptr<TKXFuncRunEdit> TKXFuncRunEditExport::CreateCommand() const {
  return std::unique_ptr<TKXFuncRunEdit>(commandClass_->Create(parser_));
}

TExtensionInfo::TExtensionInfo() = default;
TExtensionInfo::~TExtensionInfo() = default;
