#pragma once

#include "frame/export.h"
#include "frame/neighbours.h"

#include <string>
#include <utility>

namespace Zontara {

/// A list of change notices behind a property: made at first use, replaceable by the client.
class ZONTARA_EXPORT NoticeList {
public:
    /// The list, made now if there is none yet.
    const Ref<ListaCambios>& Get();
    /// Puts the client's list in place; none empties the property, and the next use makes a new list.
    void Set(Ref<ListaCambios> list) { list_ = std::move(list); }
    /// Adds a notice.
    void Send(const std::string& text = "") { Get()->Agregar(text); }

private:
    Ref<ListaCambios> list_;
};

}  // namespace Zontara
