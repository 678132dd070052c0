#pragma once

namespace brimwick {

class FileJournal;
class OpenFolders;
class TransferProgress;

/// What accompanies a transfer from outside; outlives it.
struct TransferContext {
    FileJournal& journal;
    TransferProgress& progress;
    OpenFolders& folders;
};

} // namespace brimwick
