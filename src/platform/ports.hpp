// The public ports by their short names, for what implements them.
#pragma once

#include "quill1xml/ports.hpp"

namespace quill1xml::platform {

using ports::Clock;
using ports::Document;
using ports::Element;
using ports::Environment;
using ports::EventLog;
using ports::Files;
using ports::FileVersion;
using ports::FolderHold;
using ports::Http;
using ports::HttpReply;
using ports::NotReached;
using ports::ParseError;
using ports::Schema;
using ports::SourceEncoding;
using ports::System;
using ports::systemEnvironment;
using ports::Validators;
using ports::Xml;

}  // namespace quill1xml::platform
