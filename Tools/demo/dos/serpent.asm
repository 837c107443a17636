; Marsh Serpent: eat the fireflies, mind the stones and your own tail.
; With -DEGA the sixteen colours of mode 0Dh, without it mode 13h.

%include "common.inc"

%ifdef EGA
MODE    equ 0Dh
; Four colours a tile.
%define RAMPS db 0,2,0,0, 0,8,7,15, 0,2,10,14, 0,2,10,15, 0,6,14,15, 0,1,9,11
TEXT_DIM equ 2
TEXT_ON  equ 14
TEXT_HOT equ 12
%else
MODE    equ 13h
%define RAMPS db 16,17,18,19, 20,21,22,23, 16,24,25,26, 16,24,26,27, 16,28,29,30, 31,32,33,34
TEXT_DIM equ 26
TEXT_ON  equ 29
TEXT_HOT equ 28
%endif

COLUMNS equ 40
ROWS    equ 25

T_GRASS equ 0
T_STONE equ 1
T_BODY  equ 2
T_HEAD  equ 3
T_FLY   equ 4
T_WATER equ 5

start:
        call readSwitches
        call readBest
        mov ax, MODE
        int 10h
%ifndef EGA
        mov si, palette
        mov al, 16
        mov cx, 19
        call setPalette
%endif
        cmp byte [selfPlay], PLAY
        jne newGame
title:
        call drawField
        mov dh, 5
        mov bl, TEXT_ON
        mov si, titleText
        call putCentred
        mov dh, 8
        mov bl, TEXT_DIM
        mov si, tagline
        call putCentred
        mov dh, 12
        mov si, help1
        call putCentred
        mov dh, 14
        mov si, help2
        call putCentred
        mov dh, 18
        mov bl, TEXT_HOT
        mov si, pressKey
        call putCentred
        call waitKey
        cmp al, 27
        je quit

newGame:
        mov word [score], 0
        mov word [level], 1
        mov word [steps], 0
        mov word [shownScore], 0FFFFh
        mov byte [eaten], 0
        mov byte [alive], 1
        mov word [dx_], 1
        mov word [dy_], 0
        mov word [lastDx], 1
        mov word [lastDy], 0
        call drawField
        ; The serpent starts with four cells in the middle.
        mov word [headAt], 3
        mov word [tailAt], 0
        mov word [grow], 0
        mov cx, 4
        mov bx, 0
        mov al, 16
.cells: mov ah, 12
        mov [cells + bx], ax
        push bx
        push cx
        push ax
        mov dx, ax
        mov al, T_BODY
        call setCell
        pop ax
        pop cx
        pop bx
        inc al
        add bx, 2
        loop .cells
        call placeFly

.turn:
        mov ax, [score]                 ; text is slow in mode 0Dh
        cmp ax, [shownScore]
        je .shown
        call showScore
.shown:
        ; A level takes a frame off the pause between two steps.
        mov cx, 11
        sub cx, [level]
        cmp cx, 3
        jge .pause
        mov cx, 3
.pause: push cx
        call waitFrame
        call soundTick
        call readKeys
        pop cx
        cmp byte [alive], 0
        je over
        loop .pause
        cmp byte [selfPlay], PLAY
        je .go
        call steer
        inc word [steps]
        cmp word [steps], 900
        jae quit
.go:    call step
        cmp byte [alive], 0
        jne .turn

over:
        mov cx, 24                      ; a falling tone
        mov bx, 1500
.fall:  push cx
        mov al, 2
        call tone
        call waitFrame
        call soundTick
        add bx, 300
        pop cx
        loop .fall
        cmp byte [selfPlay], PLAY
        jne quit
        mov ax, [score]
        cmp ax, [best]
        jbe .noBest
        mov [best], ax
.noBest:
        call showScore
        mov dh, 11
        mov bl, TEXT_HOT
        mov si, overText
        call putCentred
        mov dh, 13
        mov bl, TEXT_ON
        mov si, againText
        call putCentred
.key:   call waitKey
        cmp al, 27
        je quit
        cmp al, 13
        jne .key
        jmp newGame

; Arrow keys turn, Esc ends the program, P pauses.
readKeys:
        call pollKey
        jz .done
        cmp al, 27
        je quit
        or al, 20h
        cmp al, 'p'
        jne .arrows
        call waitKey
        ret
.arrows:
        mov bx, keyTable
.try:   cmp byte [bx], 0
        je .done
        cmp ah, [bx]
        je .found
        add bx, 3
        jmp .try
.found: movsx ax, byte [bx + 1]
        movsx cx, byte [bx + 2]
        ; Never straight back into the neck.
        mov si, ax
        add si, [lastDx]
        mov di, cx
        add di, [lastDy]
        or si, di
        jz .done
        mov [dx_], ax
        mov [dy_], cx
.done:  ret

; Moves the serpent by one cell.
step:
        mov bx, [headAt]
        shl bx, 1
        mov dx, [cells + bx]
        mov al, T_BODY
        call setCell
        mov ax, [dx_]
        mov [lastDx], ax
        add dl, al
        mov ax, [dy_]
        mov [lastDy], ax
        add dh, al
        call cellAt                     ; al = what lies there
        cmp al, T_STONE
        je .dead
        cmp al, T_BODY
        je .dead
        cmp al, T_FLY
        jne .free
        push dx
        mov ax, [level]
        mov cx, 10
        mul cx
        add [score], ax
        add word [grow], 2
        mov bx, 1100
        mov al, 4
        call tone
        inc byte [eaten]
        cmp byte [eaten], 6
        jb .sameLevel
        mov byte [eaten], 0
        inc word [level]
        mov bx, 600
        mov al, 12
        call tone
        mov cx, 3                       ; three more stones
.stones:
        push cx
        call freeCell
        mov al, T_STONE
        call setCell
        pop cx
        loop .stones
.sameLevel:
        call placeFly
        pop dx
.free:
        mov al, T_HEAD
        call setCell
        mov bx, [headAt]
        inc bx
        and bx, 1023
        mov [headAt], bx
        shl bx, 1
        mov [cells + bx], dx
        cmp word [grow], 0
        je .moveTail
        dec word [grow]
        ret
.moveTail:
        mov bx, [tailAt]
        inc bx
        and bx, 1023
        xchg bx, [tailAt]
        shl bx, 1
        mov dx, [cells + bx]
        mov al, T_GRASS
        jmp setCell
.dead:  mov byte [alive], 0
        ret

; Plays by itself: of the four ways the free one that leads nearest to the firefly and has a way on.
steer:
        mov word [bestDistance], 7FFFh
        mov bx, keyTable
.try:   cmp byte [bx], 0
        je .done
        push bx
        mov si, [headAt]
        shl si, 1
        mov dx, [cells + si]
        add dl, [bx + 1]
        add dh, [bx + 2]
        call cellAt
        cmp al, T_STONE
        je .next
        cmp al, T_BODY
        je .next
        call waysOn
        movsx ax, dl
        movzx cx, byte [flyX]
        sub ax, cx
        jns .positiveX
        neg ax
.positiveX:
        mov bp, ax
        movsx ax, dh
        movzx cx, byte [flyY]
        sub ax, cx
        jns .positiveY
        neg ax
.positiveY:
        add ax, bp
        cmp byte [ways], 0
        jne .open
        add ax, 200
.open:  cmp ax, [bestDistance]
        jae .next
        mov [bestDistance], ax
        pop bx
        push bx
        movsx ax, byte [bx + 1]
        mov [dx_], ax
        movsx ax, byte [bx + 2]
        mov [dy_], ax
.next:  pop bx
        add bx, 3
        jmp .try
.done:  ret

; ways = free cells around dx.
waysOn:
        mov byte [ways], 0
        mov di, keyTable
.try:   cmp byte [di], 0
        je .done
        push dx
        add dl, [di + 1]
        add dh, [di + 2]
        call cellAt
        pop dx
        cmp al, T_STONE
        je .next
        cmp al, T_BODY
        je .next
        inc byte [ways]
.next:  add di, 3
        jmp .try
.done:  ret

placeFly:
        call freeCell
        mov [flyX], dl
        mov [flyY], dh
        mov al, T_FLY
        jmp setCell

; dl, dh = a random cell with grass.
freeCell:
        mov cx, COLUMNS - 2
        call randomBelow
        inc al
        mov dl, al
        mov cx, ROWS - 3
        call randomBelow
        add al, 2
        mov dh, al
        call cellAt
        cmp al, T_GRASS
        jne freeCell
        ret

; al = content of cell dl, dh.
cellAt:
        push bx
        call cellIndex
        mov al, [grid + bx]
        pop bx
        ret

cellIndex:
        push ax
        movzx ax, dh
        mov bx, COLUMNS
        push dx
        mul bx
        pop dx
        movzx bx, dl
        add bx, ax
        pop ax
        ret

; Puts tile al into cell dl, dh, and draws it.
setCell:
        push bx
        call cellIndex
        mov [grid + bx], al
        pop bx

; Draws tile al at cell dl, dh.
drawTile:
        pusha
        movzx si, al
        mov bx, si
        shl si, 6
        add si, tiles
        shl bx, 2
        add bx, ramps
%ifdef EGA
        ; A row is one byte in each of the four planes.
        movzx di, dl
        movzx ax, dh
        imul ax, 40 * 8
        add di, ax
        push es
        push 0A000h
        pop es
        mov bp, 8
.row:   xor ecx, ecx                    ; the four plane bytes
        mov dx, 8
.pixel: lodsb
        and al, 3
        xlatb
        shl ecx, 1
        shr al, 1
        jnc .plane1
        or ecx, 1
.plane1:
        shr al, 1
        jnc .plane2
        or ecx, 100h
.plane2:
        shr al, 1
        jnc .plane3
        or ecx, 10000h
.plane3:
        shr al, 1
        jnc .planesDone
        or ecx, 1000000h
.planesDone:
        dec dx
        jnz .pixel
        mov dx, 3C4h
        mov ax, 0102h
.plane: out dx, ax
        mov [es:di], cl
        shr ecx, 8
        shl ah, 1
        cmp ah, 16
        jb .plane
        add di, 40
        dec bp
        jnz .row
        mov ax, 0F02h
        out dx, ax
        pop es
%else
        movzx di, dl
        shl di, 3
        movzx ax, dh
        imul ax, 320 * 8
        add di, ax
        push es
        push 0A000h
        pop es
        mov dx, 8
.row:   mov cx, 8
.pixel: lodsb
        and al, 3
        xlatb
        stosb
        loop .pixel
        add di, 320 - 8
        dec dx
        jnz .row
        pop es
%endif
        popa
        ret

; Row 0 shows the score, a wall of stones stands around the marsh, a pond lies in each corner.
drawField:
        xor dx, dx
.cell:  mov al, T_GRASS
        or dh, dh
        jz .put
        cmp dh, 1
        je .stone
        cmp dh, ROWS - 1
        je .stone
        or dl, dl
        jz .stone
        cmp dl, COLUMNS - 1
        jne .put
.stone: mov al, T_STONE
.put:   call setCell
        inc dl
        cmp dl, COLUMNS
        jb .cell
        xor dl, dl
        inc dh
        cmp dh, ROWS
        jb .cell
        ret

showScore:
        mov ax, [score]
        mov [shownScore], ax
        mov dx, 0001h
        mov bl, TEXT_DIM
        mov si, scoreText
        call putText
        mov bl, TEXT_ON
        mov ax, [score]
        call putNumber
        mov dx, 000Fh
        mov bl, TEXT_DIM
        mov si, levelText
        call putText
        mov bl, TEXT_ON
        mov ax, [level]
        call putNumber
        mov dx, 001Ch
        mov bl, TEXT_DIM
        mov si, bestText
        call putText
        mov bl, TEXT_ON
        mov ax, [best]
        jmp putNumber

titleText  db ' M A R S H   S E R P E N T ', '$'
tagline    db ' Every firefly makes you longer ', '$'
help1      db ' Arrows turn   P pauses   Esc ends ', '$'
help2      db ' Mind the stones and your own tail ', '$'
pressKey   db ' Press a key ', '$'
overText   db ' T H E   M A R S H   W I N S ', '$'
againText  db ' Enter: again   Esc: enough ', '$'
scoreText  db 'SCORE ', '$'
levelText  db 'LEVEL ', '$'
bestText   db 'BEST ', '$'

; Scan code, step to the right, step down.
keyTable db 4Bh, -1, 0,  4Dh, 1, 0,  48h, 0, -1,  50h, 0, 1,  0

ramps   RAMPS

%ifndef EGA
palette db 2,11,9,  4,16,11,  6,22,13,  9,28,16         ; marsh
        db 6,8,11,  15,18,22,  25,29,33,  38,42,46  ; stone
        db 6,34,12,  22,52,16,  44,63,28,  63,63,50 ; serpent
        db 63,28,6,  63,52,10,  63,63,44            ; firefly
        db 2,8,20,  4,16,34,  10,30,48,  30,50,60   ; water
%endif

tiles:  ; Spaces and 1 to 3 choose one of the tile's four colours.
%ifdef EGA
        db '        '
        db '   1    '
        db '        '
        db '        '
        db '      1 '
        db '        '
        db ' 1      '
        db '        '
%else
        db '  1    1'
        db ' 2     1'
        db ' 1   2  '
        db '     1  '
        db '1       '
        db '1   1  2'
        db '    2  1'
        db '  1     '
%endif
        db ' 333333 '
        db '32222221'
        db '32222221'
        db '32222211'
        db '32222221'
        db '32222221'
        db '32212211'
        db ' 111111 '

        db '  1111  '
        db ' 122221 '
        db '12333221'
        db '12322221'
        db '12222221'
        db '12222221'
        db ' 122221 '
        db '  1111  '

        db ' 111111 '
        db '12222221'
        db '12 22 21'
        db '12322321'
        db '12222221'
        db '12211221'
        db ' 122221 '
        db '  1111  '

        db '        '
        db ' 3 11 3 '
        db '  1221  '
        db ' 123321 '
        db ' 123321 '
        db '  1221  '
        db ' 3 11 3 '
        db '        '

        db '11122111'
        db '12211122'
        db '11111111'
        db '22111221'
        db '11222111'
        db '11111111'
        db '12211222'
        db '11122111'

        section .bss
steps   resw 1
shownScore resw 1
eaten   resb 1
alive   resb 1
dx_     resw 1
dy_     resw 1
lastDx  resw 1
lastDy  resw 1
headAt  resw 1
tailAt  resw 1
grow    resw 1
flyX    resb 1
flyY    resb 1
ways    resb 1
bestDistance resw 1
grid    resb COLUMNS * ROWS
cells   resw 1024
