#pragma once

#include "app/commands/SearchOutput.h"
#include "platform/ports/InstanceService.h"

#include <memory>
#include <string>

namespace brimwick {

/// A search as one start of the program asks it of another.
InstanceRequest searchRequest(const std::string& text, SearchFormat format);

/// Searches an index and writes the result down. Any thread.
RequestResult search(const FolderIndex& index, const std::string& text, SearchFormat format,
                     const ByteSink& output);

/// Answers a searchRequest() from the index of the program that runs.
InstanceService::Work answerSearchRequest(const InstanceRequest& request,
                                          std::shared_ptr<const FolderIndex> index);

} // namespace brimwick
