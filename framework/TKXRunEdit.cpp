#include "framework/kxcomponents.h"

TKXEdit::~TKXEdit() = default;
TKXEditorForm::~TKXEditorForm() = default;

TKXRunEdit::TKXRunEdit() = default;
TKXRunEdit::~TKXRunEdit() = default;

/// Nothing to do for a command that keeps nothing beside its parameters.
void TKXRunEdit::PostEdit() {}
