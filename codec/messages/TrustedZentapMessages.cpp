#include "codec/messages/TrustedZentapMessages.h"

#include "codec/messages/MessageVisitors.h"

namespace KT {

template class Message<TrustedZentapDeviceSetRequest>;
template class Message<TrustedZentapDeviceSetResponse>;
template class Message<TrustedZentapDeviceGetRequest>;
template class Message<TrustedZentapDeviceGetResponse>;
template class Message<TrustedZentapDeviceGetListRequest>;
template class Message<TrustedZentapDeviceGetListResponse>;
template class Message<TrustedZentapDeviceDeleteRequest>;
template class Message<TrustedZentapDeviceDeleteResponse>;

}  // namespace KT
