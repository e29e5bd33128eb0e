# Writes the PNG files PICTURES into the C++ source OUT, as window_icon_pictures.h declares them.

set(arrays)
set(list)
foreach(picture IN LISTS PICTURES)
    file(READ ${picture} bytes HEX)
    string(REGEX REPLACE "(..)" "0x\\1," bytes "${bytes}")
    get_filename_component(name ${picture} NAME_WE)
    string(MAKE_C_IDENTIFIER ${name} name)
    string(APPEND arrays "const unsigned char ${name}[] = {${bytes}};\n")
    string(APPEND list "{${name}, sizeof(${name})}, ")
endforeach()
file(WRITE ${OUT} "#include \"window_icon_pictures.h\"

namespace {
${arrays}
const PngPicture pictures[] = {${list}};
}  // namespace

std::span<const PngPicture> window_icon_pictures() {
    return pictures;
}
")
