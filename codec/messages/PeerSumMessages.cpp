#include "codec/messages/PeerSumMessages.h"

#include "codec/messages/MessageVisitors.h"

namespace KT {

template class Message<PeerSumSetRequest>;
template class Message<PeerSumSetResponse>;
template class Message<PeerSumGetRequest>;
template class Message<PeerSumGetResponse>;
template class Message<PeerSumDeleteRequest>;
template class Message<PeerSumDeleteResponse>;

}  // namespace KT
