#pragma once

#include <QByteArray>

// Programs for a guest: DOSBox's exit status says nothing, so they write down where they were.
namespace ludarium::test {

// Writes "D:\FOLDER|arguments" of where and how it was called to C:\OUT.TXT.
constexpr uchar whereProgram[] = {
    0xb4, 0x3c,       // mov ah,3ch        create the file
    0x31, 0xc9,       // xor cx,cx
    0xba, 0x43, 0x01, // mov dx,name
    0xcd, 0x21,       // int 21h
    0x50,             // push ax           its handle
    0xb4, 0x19,       // mov ah,19h        current drive
    0xcd, 0x21,       // int 21h
    0x04, 0x41,       // add al,'A'
    0xa2, 0x4e, 0x01, // mov [text],al
    0xb4, 0x47,       // mov ah,47h        current folder
    0xb2, 0x00,       // mov dl,0
    0xbe, 0x51, 0x01, // mov si,text+3
    0xcd, 0x21,       // int 21h
    0xbf, 0x4e, 0x01, // mov di,text
    0x47,             // end: inc di
    0x80, 0x3d, 0x00, // cmp byte [di],0
    0x75, 0xfa,       // jne end
    0xc6, 0x05, 0x7c, // mov byte [di],'|'
    0x47,             // inc di
    0xbe, 0x80, 0x00, // mov si,80h        the command tail: its length, then the text
    0xac,             // lodsb
    0x88, 0xc1,       // mov cl,al
    0x30, 0xed,       // xor ch,ch
    0xf3, 0xa4,       // rep movsb
    0x89, 0xf9,       // mov cx,di
    0xba, 0x4e, 0x01, // mov dx,text
    0x29, 0xd1,       // sub cx,dx
    0x5b,             // pop bx
    0xb4, 0x40,       // mov ah,40h        write
    0xcd, 0x21,       // int 21h
    0xb4, 0x4c,       // mov ah,4ch        end
    0xcd, 0x21,       // int 21h
    'C',  ':',  '\\', 'O', 'U', 'T', '.', 'T', 'X', 'T', 0, // name
    'C',  ':',  '\\',                                       // text
};

template<size_t N>
QByteArray bytes(const uchar (&program)[N]) {
    return QByteArray(reinterpret_cast<const char *>(program), N);
}

} // namespace ludarium::test
