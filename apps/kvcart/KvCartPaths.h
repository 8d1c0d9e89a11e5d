#pragma once

#include <string>
#include <vector>

// Where kvcart finds the bundled catalogue and the user's custom files.
namespace kvcart {

// The bundled data folder, ending in '/': `override` when not empty, else
// $KVCART_DATA_DIR, else the first of <prefix>/share/KvCart/ beside the
// program's <prefix>/bin and beside the loaded library's <prefix>/lib that
// holds "ellipsoid.tsf".  Empty when none does; `searched` then lists the
// folders tried.
std::string FindDataFolder(const std::string& override, std::vector<std::string>* searched);

// The user's folder, ending in '/': `override`, else $KVCART_USER_DIR, else
// $XDG_CONFIG_HOME/kvcart/, else ~/.config/kvcart/.  It need not exist.
std::string FindUserFolder(const std::string& override);

}  // namespace kvcart
