#pragma once

namespace brimwick {

class FileJournal;
class TransferProgress;

/// What accompanies a transfer from outside; outlives it.
struct TransferContext {
    FileJournal& journal;
    TransferProgress& progress;
};

} // namespace brimwick
