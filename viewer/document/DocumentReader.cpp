#include "document/DocumentReader.h"

namespace viewer {

DocumentReader::DocumentReader(HWND notify, UINT message)
    : m_thread(notify, message, [](const Place& place) {
          const std::optional<DocumentDetails> details = FindDocument(place.folder, place.row);
          return details ? std::make_unique<DocumentContent>(ReadContent(*details)) : nullptr;
      }) {}

} // namespace viewer
