#include "codec/messages/CurrZentapMessages.h"

#include "codec/messages/MessageVisitors.h"

namespace KT {

template class Message<CurrZentapDeviceSetRequest>;
template class Message<CurrZentapDeviceSetResponse>;
template class Message<CurrZentapDeviceGetRequest>;
template class Message<CurrZentapDeviceGetResponse>;
template class Message<CurrZentapDeviceGetListRequest>;
template class Message<CurrZentapDeviceGetListResponse>;
template class Message<CurrZentapDeviceDeleteRequest>;
template class Message<CurrZentapDeviceDeleteResponse>;

}  // namespace KT
