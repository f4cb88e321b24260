# Sourced by scripts that run one Windows program after the other in the prefix WINEPREFIX.

# Wine's server and services that a program brings up end with the last program, and the next one that starts may meet
# them while they end, and fail. They also keep that program's output open, and who reads it waits for them.
keep_wine_server() {
  /usr/lib/wine/wineserver64 -p600 || true # there may be one already
  "$(dirname "${BASH_SOURCE[0]}")/wine-run" cmd /c exit < /dev/null > /dev/null 2>&1
}

end_wine_server() {
  /usr/lib/wine/wineserver64 -k || true
  /usr/lib/wine/wineserver64 -w || true
}
