#include "frame/notices.h"

#include "frame/provider.h"

namespace Zontara {

const Ref<ListaCambios>& NoticeList::Get() {
    if (!list_) list_ = Neighbours().NewListaCambios();
    return list_;
}

}  // namespace Zontara
