#pragma once

#include <string>
#include <vector>

#include "server/context/context_field.h"
#include "server/context/letter_fields.h"
#include "server/wire/request_keys.h"

namespace server {

/// What the keys EMITFIELDDESCRIPTORS and EXPLAINSTATE ask for.
Explanations AskedExplanations(const RequestKeys& keys);

/// A stored context with the explanations that are asked for, and without the others. States and errors are
/// explained from the flags as they are stored; a description that was not stored comes from `fields`, the
/// letter's definition. Everything else stays as it was recorded.
///
/// Throws Failure kDamaged where `context` is no XML.
std::string WithExplanations(const std::string& context, const Explanations& explanations,
                             const std::vector<LetterField>& fields);

}  // namespace server
