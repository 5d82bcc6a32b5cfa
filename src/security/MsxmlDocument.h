// XML documents through the system's own parser, MSXML.
#pragma once

#include <memory>
#include <string_view>

#include "security/UtilityXMLDOMFunctions.h"

namespace v5 {

// The document that `text` is; null when it is not well-formed. Nothing outside the text is read: no external entity,
// no schema, no document type. White space and comments are kept. Throws AutomationError when there is no parser. COM
// must be initialised on the thread.
std::unique_ptr<XmlDocument> ParseWithMsxml(std::wstring_view text);

}  // namespace v5
