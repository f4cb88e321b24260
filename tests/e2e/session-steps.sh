# The steps of session.sh: what is asked, how the program ends, what it says and what the host logs.

checking "starting without files"
step 0 '' start_host <<'LOG'
3 [KTData] Creat database success.(KT::DbEngine::CreateTable)
3 [KTData] Init database success.(KT::DbEngine::InitDb)
3 [KTData] Creat database success.(KT::DbEngine::CreateTable)
3 [KTData] Init database success.(KT::DbEngine::InitDb)
3 [KTData] Creat database success.(KT::DbEngine::CreateTable)
3 [KTData] Init database success.(KT::DbEngine::InitDb)
3 [KTData] Init Marnock finished.(KT::Marnock::Init)
LOG

checking "trusted devices"
step 0 'done' ctl --pkg app trusted set t1 --field devName=Tablet <<'LOG'
3 [KTData] Received the request event of setting zentap device.(KT::Marnock::SetTrustedZentapDeviceInfo)
3 [KTData] Delete zentap device.(KT::TrustedZentapDbEngine::DeleteZentapDeviceInfo)
3 [KTData] Delete item 0(KT::DbEngine::DeleteDbItem)
3 [KTData] Save zentap database into disk.(KT::TrustedZentapDbEngine::SaveZentapDbIntoDisk)
3 [KTData] Save database success.(KT::DbEngine::SaveDbIntoDisk)
3 [KTData] pkgName:app, sumId:t1, result:0(KT::Marnock::SetTrustedZentapDeviceInfo)
LOG
step 0 'done' ctl --pkg app trusted set t1 --field devName=Tablet2 <<'LOG'
3 [KTData] Received the request event of setting zentap device.(KT::Marnock::SetTrustedZentapDeviceInfo)
3 [KTData] Delete zentap device.(KT::TrustedZentapDbEngine::DeleteZentapDeviceInfo)
3 [KTData] Save zentap database into disk.(KT::TrustedZentapDbEngine::SaveZentapDbIntoDisk)
3 [KTData] Save database success.(KT::DbEngine::SaveDbIntoDisk)
3 [KTData] pkgName:app, sumId:t1, result:0(KT::Marnock::SetTrustedZentapDeviceInfo)
LOG
step 4 'marnockctl: no trusted device has the sumId "nobody"' ctl --pkg $'Zo\xc3\xab\e\n' trusted get nobody <<'LOG'
3 [KTData] Received the request event of getting zentap device.(KT::Marnock::GetTrustedZentapDeviceInfo)
3 [KTData] pkgName:Zoë\x1b\n, sumId:nobody, result:0(KT::Marnock::GetTrustedZentapDeviceInfo)
LOG
step 0 "$(printf 'devName\nTablet2\n1 trusted device')" ctl --pkg app trusted list <<'LOG'
3 [KTData] Received the request event of getting zentap device list.(KT::Marnock::GetTrustedZentapDeviceInfoList)
3 [KTData] pkgName:app, result:0(KT::Marnock::GetTrustedZentapDeviceInfoList)
LOG
step 0 'done' ctl --pkg app trusted delete t1 <<'LOG'
3 [KTData] Received the request event of deleting zentap device.(KT::Marnock::DeleteTrustedZentapDeviceInfo)
3 [KTData] Delete zentap device.(KT::TrustedZentapDbEngine::DeleteZentapDeviceInfo)
3 [KTData] Save zentap database into disk.(KT::TrustedZentapDbEngine::SaveZentapDbIntoDisk)
3 [KTData] Save database success.(KT::DbEngine::SaveDbIntoDisk)
3 [KTData] pkgName:app, sumId:t1, result:0(KT::Marnock::DeleteTrustedZentapDeviceInfo)
LOG

checking "current devices"
step 0 'done' ctl --pkg app current set c1 --field devName=Phone <<'LOG'
3 [KTData] Received the request event of setting curr zentap device.(KT::Marnock::SetCurrZentapDeviceInfo)
3 [KTData] Delete zentap device.(KT::CurrZentapDbEngine::DeleteZentapDeviceInfo)
3 [KTData] Delete item 0(KT::DbEngine::DeleteDbItem)
3 [KTData] Save database success.(KT::DbEngine::SaveDbIntoDisk)
3 [KTData] pkgName:app, sumId:c1, result:0(KT::Marnock::SetCurrZentapDeviceInfo)
LOG
step 4 'marnockctl: no current device has the sumId "nobody"' ctl --pkg app current get nobody <<'LOG'
3 [KTData] Received the request event of getting curr zentap device.(KT::Marnock::GetCurrZentapDeviceInfo)
3 [KTData] pkgName:app, sumId:nobody, result:0(KT::Marnock::GetCurrZentapDeviceInfo)
LOG
step 0 "$(printf 'devName\nPhone\n1 current device')" ctl --pkg app current list <<'LOG'
3 [KTData] Received the request event of getting curr zentap device list.(KT::Marnock::GetCurrZentapDeviceInfoList)
3 [KTData] pkgName:app, result:0(KT::Marnock::GetCurrZentapDeviceInfoList)
LOG
step 0 'done' ctl --pkg app current delete nobody <<'LOG'
3 [KTData] Received the request event of deleting curr zentap device.(KT::Marnock::DeleteCurrZentapDeviceInfo)
3 [KTData] Delete zentap device.(KT::CurrZentapDbEngine::DeleteZentapDeviceInfo)
3 [KTData] Delete item 0(KT::DbEngine::DeleteDbItem)
3 [KTData] Save database success.(KT::DbEngine::SaveDbIntoDisk)
3 [KTData] pkgName:app, sumId:nobody, result:0(KT::Marnock::DeleteCurrZentapDeviceInfo)
LOG

checking "peers"
step 0 'done' ctl peer set u1 s1 <<'LOG'
3 [KTData] Received the request event of setting peer device.(KT::Marnock::SetPeerDevice)
3 [KTData] Delete peer device.(KT::PeerDeviceDbEngine::DeletePeerDevice)
3 [KTData] Delete item 0(KT::PeerDeviceDbEngine::DeletePeerDevice)
3 [KTData] Save database success.(KT::DbEngine::SaveDbIntoDisk)
3 [KTData] udId:u1, result:0(KT::Marnock::SetPeerDevice)
LOG
step 0 s1 ctl peer get u1 <<'LOG'
3 [KTData] Received the request event of getting peer device.(KT::Marnock::GetPeerDevice)
3 [KTData] udId:u1, sumId:s1, result:0(KT::Marnock::GetPeerDevice)
LOG
step 0 'done' ctl peer delete u1 <<'LOG'
3 [KTData] Received the request event of deleting peer device.(KT::Marnock::DeletePeerDevice)
3 [KTData] Delete peer device.(KT::PeerDeviceDbEngine::DeletePeerDevice)
3 [KTData] Save database success.(KT::DbEngine::SaveDbIntoDisk)
3 [KTData] udId:u1, result:0(KT::Marnock::DeletePeerDevice)
LOG
step 4 'marnockctl: no peer has the udId "u1"' ctl peer get u1 <<'LOG'
3 [KTData] Received the request event of getting peer device.(KT::Marnock::GetPeerDevice)
3 [KTData] udId:u1, sumId:, result:0(KT::Marnock::GetPeerDevice)
LOG

checking "requests without a payload: no answer"
step 0 'no answer' client send 0xc40001 '' <<'LOG'
3 [KTData] Received the request event of setting zentap device.(KT::Marnock::SetTrustedZentapDeviceInfo)
4 [KTData] Set zentap device message is null.(KT::Marnock::SetTrustedZentapDeviceInfo)
LOG
step 0 'no answer' client send 0xc40002 '' <<'LOG'
3 [KTData] Received the request event of getting zentap device.(KT::Marnock::GetTrustedZentapDeviceInfo)
4 [KTData] Zentap device message is null.(KT::Marnock::GetTrustedZentapDeviceInfo)
LOG
step 0 'no answer' client send 0xc40003 '' <<'LOG'
3 [KTData] Received the request event of getting zentap device list.(KT::Marnock::GetTrustedZentapDeviceInfoList)
4 [KTData] Zentap device list message is null.(KT::Marnock::GetTrustedZentapDeviceInfoList)
LOG
step 0 'no answer' client send 0xc40004 '' <<'LOG'
3 [KTData] Received the request event of deleting zentap device.(KT::Marnock::DeleteTrustedZentapDeviceInfo)
4 [KTData] Delete zentap device message is null.(KT::Marnock::DeleteTrustedZentapDeviceInfo)
LOG
step 0 'no answer' client send 0xc40005 '' <<'LOG'
3 [KTData] Received the request event of setting curr zentap device.(KT::Marnock::SetCurrZentapDeviceInfo)
4 [KTData] Set zentap device message is null.(KT::Marnock::SetCurrZentapDeviceInfo)
LOG
step 0 'no answer' client send 0xc40006 '' <<'LOG'
3 [KTData] Received the request event of getting curr zentap device.(KT::Marnock::GetCurrZentapDeviceInfo)
4 [KTData] Zentap device message is null.(KT::Marnock::GetCurrZentapDeviceInfo)
LOG
step 0 'no answer' client send 0xc40007 '' <<'LOG'
3 [KTData] Received the request event of getting curr zentap device list.(KT::Marnock::GetCurrZentapDeviceInfoList)
4 [KTData] Zentap device list message is null.(KT::Marnock::GetCurrZentapDeviceInfoList)
LOG
step 0 'no answer' client send 0xc40008 '' <<'LOG'
3 [KTData] Received the request event of deleting curr zentap device.(KT::Marnock::DeleteCurrZentapDeviceInfo)
4 [KTData] Delete zentap device message is null.(KT::Marnock::DeleteCurrZentapDeviceInfo)
LOG
step 0 'no answer' client send 0xc40009 '' <<'LOG'
3 [KTData] Received the request event of setting peer device.(KT::Marnock::SetPeerDevice)
4 [KTData] Set peer device message is null.(KT::Marnock::SetPeerDevice)
LOG
step 0 'no answer' client send 0xc4000a '' <<'LOG'
3 [KTData] Received the request event of getting peer device.(KT::Marnock::GetPeerDevice)
4 [KTData] Get peer device message is null.(KT::Marnock::GetPeerDevice)
LOG
step 0 'no answer' client send 0xc4000b '' <<'LOG'
3 [KTData] Received the request event of deleting peer device.(KT::Marnock::DeletePeerDevice)
4 [KTData] Delete peer device message is null.(KT::Marnock::DeletePeerDevice)
LOG

checking "keys with a single quote: what reads by key fails, what binds it works"
step 0 "status 0 $(str p)$(int32 0)" client send 0xc40001 "$(str p)$(str "it's")$default_trusted" <<'LOG'
3 [KTData] Received the request event of setting zentap device.(KT::Marnock::SetTrustedZentapDeviceInfo)
3 [KTData] Delete zentap device.(KT::TrustedZentapDbEngine::DeleteZentapDeviceInfo)
4 [KTData] Delete database item filed:near "s": syntax error(KT::DbEngine::DeleteDbItem)
3 [KTData] Save zentap database into disk.(KT::TrustedZentapDbEngine::SaveZentapDbIntoDisk)
3 [KTData] Save database success.(KT::DbEngine::SaveDbIntoDisk)
3 [KTData] pkgName:p, sumId:it's, result:0(KT::Marnock::SetTrustedZentapDeviceInfo)
LOG
step 0 "status 0 $(str p)$read_failed$default_trusted" client send 0xc40002 "$(str p)$(str "it's")" <<'LOG'
3 [KTData] Received the request event of getting zentap device.(KT::Marnock::GetTrustedZentapDeviceInfo)
4 [KTData] Get zentap device failed:near "s": syntax error(KT::TrustedZentapDbEngine::GetZentapDeviceInfo)
4 [KTData] Get zentap device info failed.(KT::DevicePersistence::GetTrustedZentapDeviceInfo)
3 [KTData] pkgName:p, sumId:it's, result:-4996(KT::Marnock::GetTrustedZentapDeviceInfo)
LOG
step 0 "status 0 $change_failed" client send 0xc40004 "$(str p)$(str "it's")" <<'LOG'
3 [KTData] Received the request event of deleting zentap device.(KT::Marnock::DeleteTrustedZentapDeviceInfo)
3 [KTData] Delete zentap device.(KT::TrustedZentapDbEngine::DeleteZentapDeviceInfo)
4 [KTData] Delete database item filed:near "s": syntax error(KT::DbEngine::DeleteDbItem)
4 [KTData] Delete zentap device info failed.(KT::DevicePersistence::DeleteTrustedZentapDeviceInfo)
3 [KTData] pkgName:p, sumId:it's, result:-4999(KT::Marnock::DeleteTrustedZentapDeviceInfo)
LOG
step 0 "status 0 $(str p)$read_failed$default_current" client send 0xc40006 "$(str p)$(str "it's")" <<'LOG'
3 [KTData] Received the request event of getting curr zentap device.(KT::Marnock::GetCurrZentapDeviceInfo)
4 [KTData] Get zentap device failed:near "s": syntax error(KT::CurrZentapDbEngine::GetZentapDeviceInfo)
4 [KTData] Get curr zentap device info failed.(KT::DevicePersistence::GetCurrZentapDeviceInfo)
3 [KTData] pkgName:p, sumId:it's, result:-4996(KT::Marnock::GetCurrZentapDeviceInfo)
LOG
step 0 "status 0 $change_failed" client send 0xc40008 "$(str p)$(str "it's")" <<'LOG'
3 [KTData] Received the request event of deleting curr zentap device.(KT::Marnock::DeleteCurrZentapDeviceInfo)
3 [KTData] Delete zentap device.(KT::CurrZentapDbEngine::DeleteZentapDeviceInfo)
4 [KTData] Delete database item filed:near "s": syntax error(KT::DbEngine::DeleteDbItem)
4 [KTData] Delete curr zentap device info failed.(KT::DevicePersistence::DeleteCurrZentapDeviceInfo)
3 [KTData] pkgName:p, sumId:it's, result:-4999(KT::Marnock::DeleteCurrZentapDeviceInfo)
LOG
step 0 "status 0 $(int32 0)" client send 0xc40009 "$(str "it's")$(str s)" <<'LOG'
3 [KTData] Received the request event of setting peer device.(KT::Marnock::SetPeerDevice)
3 [KTData] Delete peer device.(KT::PeerDeviceDbEngine::DeletePeerDevice)
4 [KTData] Delete database item filed:near "s": syntax error(KT::PeerDeviceDbEngine::DeletePeerDevice)
3 [KTData] Save database success.(KT::DbEngine::SaveDbIntoDisk)
3 [KTData] udId:it's, result:0(KT::Marnock::SetPeerDevice)
LOG
step 0 "status 0 $empty$read_failed" client send 0xc4000a "$(str "it's")" <<'LOG'
3 [KTData] Received the request event of getting peer device.(KT::Marnock::GetPeerDevice)
4 [KTData] Get peer device failed:near "s": syntax error(KT::PeerDeviceDbEngine::QueryPeerDevice)
4 [KTData] Get peer device failed.(KT::DevicePersistence::GetPeerDevice)
3 [KTData] udId:it's, sumId:, result:-4996(KT::Marnock::GetPeerDevice)
LOG
step 0 "status 0 $read_failed" client send 0xc4000b "$(str "it's")" <<'LOG'
3 [KTData] Received the request event of deleting peer device.(KT::Marnock::DeletePeerDevice)
3 [KTData] Delete peer device.(KT::PeerDeviceDbEngine::DeletePeerDevice)
4 [KTData] Delete database item filed:near "s": syntax error(KT::PeerDeviceDbEngine::DeletePeerDevice)
4 [KTData] Delete peer device info failed.(KT::DevicePersistence::DeletePeerDevice)
3 [KTData] udId:it's, result:-4996(KT::Marnock::DeletePeerDevice)
LOG

checking "a list that passes its reply's 4,096 bytes"
printf -v long_name '%0900d' 0
for key in c2 c3 c4 c5 c6; do
  step 0 'done' ctl --pkg app current set "$key" --field "devName=$long_name" <<LOG
3 [KTData] Received the request event of setting curr zentap device.(KT::Marnock::SetCurrZentapDeviceInfo)
3 [KTData] Delete zentap device.(KT::CurrZentapDbEngine::DeleteZentapDeviceInfo)
3 [KTData] Delete item 0(KT::DbEngine::DeleteDbItem)
3 [KTData] Save database success.(KT::DbEngine::SaveDbIntoDisk)
3 [KTData] pkgName:app, sumId:$key, result:0(KT::Marnock::SetCurrZentapDeviceInfo)
LOG
done
too_long="marnockctl: the list of current devices passes the 4096 bytes that the service's reply holds (status 3); "
too_long+="get the devices one by one"
step 1 "$too_long" ctl --pkg app current list <<'LOG'
3 [KTData] Received the request event of getting curr zentap device list.(KT::Marnock::GetCurrZentapDeviceInfoList)
3 [KTData] pkgName:app, result:0(KT::Marnock::GetCurrZentapDeviceInfoList)
4 [KTData] Get zentap device list ipc msg failed.(KT::Marnock::GetCurrZentapDeviceInfoList)
LOG

checking "saves that fail do not change the answer"
mkdir "$store/$peers.tmp"
step 0 'done' ctl peer set u2 s2 <<'LOG'
3 [KTData] Received the request event of setting peer device.(KT::Marnock::SetPeerDevice)
3 [KTData] Delete peer device.(KT::PeerDeviceDbEngine::DeletePeerDevice)
3 [KTData] Delete item 0(KT::PeerDeviceDbEngine::DeletePeerDevice)
4 [KTData] Rename database filed.(KT::DbEngine::SaveDbIntoDisk)
4 [KTData] Delete database filed.(KT::DbEngine::SaveDbIntoDisk)
3 [KTData] Save database success.(KT::DbEngine::SaveDbIntoDisk)
3 [KTData] udId:u2, result:0(KT::Marnock::SetPeerDevice)
LOG
rmdir "$store/$peers.tmp"
rm "$store/$peers"
mkdir "$store/$peers"
step 0 'done' ctl peer set u2 s3 <<'LOG'
3 [KTData] Received the request event of setting peer device.(KT::Marnock::SetPeerDevice)
3 [KTData] Delete peer device.(KT::PeerDeviceDbEngine::DeletePeerDevice)
4 [KTData] Save database filed:unable to open database file(KT::DbEngine::SaveDbIntoDisk)
4 A change of the peer table is answered with 0 and is not on the disk; saves failed since the last good one: 1(KT::WarnOfUnsavedChange)
3 [KTData] udId:u2, result:0(KT::Marnock::SetPeerDevice)
LOG
rmdir "$store/$peers"

checking "stopping, and starting with files"
step 0 '' stop_host <<'LOG'
3 [KTData] Save database success.(KT::DbEngine::SaveDbIntoDisk)
3 [KTData] Save zentap database into disk.(KT::TrustedZentapDbEngine::SaveZentapDbIntoDisk)
3 [KTData] Save database success.(KT::DbEngine::SaveDbIntoDisk)
3 [KTData] Save database success.(KT::DbEngine::SaveDbIntoDisk)
LOG
step 0 '' start_host <<'LOG'
3 [KTData] Load local database success.(KT::DbEngine::LoadDbFromDisk)
3 [KTData] Init database success.(KT::DbEngine::InitDb)
3 [KTData] Load local database success.(KT::DbEngine::LoadDbFromDisk)
3 [KTData] Init database success.(KT::DbEngine::InitDb)
3 [KTData] Load local database success.(KT::DbEngine::LoadDbFromDisk)
3 [KTData] Init database success.(KT::DbEngine::InitDb)
3 [KTData] Init Marnock finished.(KT::Marnock::Init)
LOG
step 0 s3 ctl peer get u2 <<'LOG'
3 [KTData] Received the request event of getting peer device.(KT::Marnock::GetPeerDevice)
3 [KTData] udId:u2, sumId:s3, result:0(KT::Marnock::GetPeerDevice)
LOG
