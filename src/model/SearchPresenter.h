#pragma once

namespace brimwick {

/// The window in which search results are shown. Main thread only.
class SearchPresenter {
  public:
    virtual ~SearchPresenter() = default;
    /// Whether the window is put away; no search changes anything then.
    virtual bool isInPhantomMode() const = 0;
    /// The table of results is to be read anew.
    virtual void resultsWereReplaced() = 0;
    /// The first result becomes the only selected one. Also called when there are no results.
    virtual void selectFirstResult() = 0;
    /// The prompt is shown with the text "No folders found.".
    virtual void showNoFoldersFound() = 0;
    virtual void hidePrompt() = 0;
    /// The prompt is shown with the text that asks for a folder's name.
    virtual void showDefaultPrompt() = 0;
};

} // namespace brimwick
