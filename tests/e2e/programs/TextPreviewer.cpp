// A module with a preview handler that shows a document's bytes as text.
#include "TextPreviewHandler.h"

extern "C" HRESULT STDMETHODCALLTYPE DllGetClassObject(REFCLSID, REFIID iid, void** object) {
    static TextPreviewHandlers handlers(TextPreviewHandler::Kind::Stream);
    return handlers.QueryInterface(iid, object);
}
