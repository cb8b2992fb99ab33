# Sourced by tools/with-desktop: the computers on which tests run besides the usual one. `--place NAME` calls the function of
# that name once the Wine prefix is there and before anything runs in it. tests/places/PlaceTest.cpp has what each must achieve.

time_zone() { export TZ=IST-5:30; }

german() { use_locale de_DE; }

japanese() { use_locale ja_JP; }

# A display of 144 dots per inch, or of MXOV_DOTS, as wide and high in inches as the usual one. Test programs are aware of it
# (tests/support/TestMain.cpp).
resolution() {
    export MXOV_DOTS=${MXOV_DOTS:-144}
    export MXOV_SCREEN=${MXOV_SCREEN:-$((1280 * MXOV_DOTS / 96))x$((1024 * MXOV_DOTS / 96))}
    sed -i "/^\[Control Panel\\\\\\\\Desktop\]/a \"LogPixels\"=dword:$(printf %08x "$MXOV_DOTS")" "$MXOV_PREFIX/user.reg"
}

# A user whose name has a blank and an umlaut. Debian's Wine takes the name from USER.
user() {
    export LC_ALL=C.UTF-8 USER='Jörg Müller'
    local before users=$MXOV_PREFIX/drive_c/users stored='J\\x00f6rg M\\x00fcller'
    before=$(ls "$users" | grep -v '^Public$')
    mv "$users/$before" "$users/$USER"
    sed -i "s/\\\\\\\\users\\\\\\\\$before/\\\\\\\\users\\\\\\\\$stored/; s/^\"USERNAME\"=.*/\"USERNAME\"=\"$stored\"/" "$MXOV_PREFIX"/*.reg
}

# Packages in a folder whose path has more than 300 characters: that in which the tests written in Python make theirs.
long_path() {
    local part
    part=$(printf 'package%.0s' {1..21})
    export TMPDIR=$scratch/$part/$part
    mkdir -p "$TMPDIR"
}

# Compiled here from Debian's package `locales`, so that the machine's own locales stay as they are.
use_locale() {
    export LOCPATH=$MXOV_BUILD/locales
    mkdir -p "$LOCPATH"
    exec 7>"$LOCPATH/lock"
    flock 7
    [ -d "$LOCPATH/$1.UTF-8" ] || localedef -i "$1" -f UTF-8 "$LOCPATH/$1.UTF-8" || fail "the locale $1 cannot be made"
    exec 7>&-
    unset LANGUAGE
    export LC_ALL=$1.UTF-8
}

enter_place() { # NAME
    export MXOV_PLACE=$1
    unset MXOV_LONG # the short counts will do
    "$1"
}
