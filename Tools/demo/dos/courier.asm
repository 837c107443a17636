; Comet Courier: carry the post through the comet belt. Mode 13h, drawn in a buffer behind the program.
; With -DTWO the sequel: another sky, faster rocks.

%include "common.inc"

%ifdef TWO
ROCKS   equ 9
%define TITLE ' COMET COURIER II '
%define TAGLINE ' The Long Mail '
%else
ROCKS   equ 7
%define TITLE ' COMET COURIER '
%define TAGLINE ' The post must get through '
%endif

STARS   equ 70
SHOTS   equ 5
PUFFS   equ 6
SKY     equ 64                          ; 64 colours of sky
ENTITY  equ 8                           ; words x and y in 16ths of a pixel, speed down, kind (0: none)

start:
        call readSwitches
        call readBest
        mov ax, 13h
        int 10h
        mov ax, cs
        add ax, 1000h
        mov [buffer], ax
        add ax, 1000h
        mov [sky], ax
        mov si, palette
        mov al, 1
        mov cx, 15
        call setPalette
        call skyPalette
        call paintSky
        call hookKeyboard
        mov cx, STARS
        mov di, stars
.star:  push cx
        mov cx, 320
        call randomBelow
        mov [di], ax
        mov cx, 200 * 16
        call randomBelow
        mov [di + 2], ax
        mov cx, 3
        call randomBelow
        inc ax
        mov [di + 4], ax
        add di, 6
        pop cx
        loop .star
        cmp byte [selfPlay], PLAY
        jne newGame
title:
        call drawSky
        mov dh, 4
        call present
        mov bl, 15
        mov si, titleText
        mov dh, 5
        call putCentred
        mov bl, 11
        mov si, taglineText
        mov dh, 7
        call putCentred
        mov bl, 7
        mov si, help1
        mov dh, 12
        call putCentred
        mov si, help2
        mov dh, 14
        call putCentred
        mov bl, 14
        mov si, pressText
        mov dh, 19
        call putCentred
        call anyKey
        cmp byte [keys + 1], 0
        jne leave_

newGame:
        mov word [score], 0
        mov word [level], 1
        mov word [hits], 0
        mov word [frames], 0
        mov byte [lives], 3
        mov byte [shield], 60
        mov word [shipX], 152
        mov word [shipY], 168
        mov di, rocks
        mov cx, (ROCKS + SHOTS + PUFFS + 1) * ENTITY / 2
        xor ax, ax
        push cs
        pop es
        rep stosw

frame:
        inc word [frames]
        cmp byte [selfPlay], PLAY
        je .hand
        call steer
        call selfPlayOver
        jae leave_
        jmp .steered
.hand:  cmp byte [keys + 1], 0          ; Esc
        jne leave_
.steered:
        call moveShip
        call moveShots
        call moveRocks
        call moveMail
        call drawSky
        call drawAll
        call waitFrame
        call soundTick
        call present
        call showStatus
        cmp byte [lives], 0
        jne frame

        cmp byte [selfPlay], PLAY
        jne leave_
        mov ax, [score]
        cmp ax, [best]
        jbe .noBest
        mov [best], ax
.noBest:
        call silence
        mov bl, 12
        mov si, overText
        mov dh, 10
        call putCentred
        mov bl, 15
        mov si, againText
        mov dh, 12
        call putCentred
.wait:  call anyKey
        cmp byte [keys + 1], 0
        jne leave_
        cmp byte [keys + 1Ch], 0        ; Enter
        je .wait
        jmp newGame

leave_:
        call unhookKeyboard
        jmp quit

; --- Keyboard: which keys are down, by scan code ---------------------------------------------------------------------

hookKeyboard:
        push es
        mov ax, 3509h
        int 21h
        mov [oldKeyboard], bx
        mov [oldKeyboard + 2], es
        mov ax, 2509h
        mov dx, keyboard
        int 21h
        pop es
        ret

unhookKeyboard:
        push ds
        lds dx, [oldKeyboard]
        mov ax, 2509h
        int 21h
        pop ds
        ret

keyboard:
        push ax
        push bx
        in al, 60h
        movzx bx, al
        and bx, 7Fh
        not al
        and al, 80h
        mov [cs:keys + bx], al
        jz .released
        mov byte [cs:pressed], 1
.released:
        mov al, 20h
        out 20h, al
        pop bx
        pop ax
        iret

; Waits until a key goes down.
anyKey:
        mov byte [pressed], 0
.wait:  cmp byte [pressed], 0
        je .wait
        ret

; --- Moving ----------------------------------------------------------------------------------------------------------

moveShip:
        mov ax, [shipX]
        cmp byte [keys + 4Bh], 0
        je .notLeft
        sub ax, 3
.notLeft:
        cmp byte [keys + 4Dh], 0
        je .notRight
        add ax, 3
.notRight:
        cmp ax, 2
        jge .inLeft
        mov ax, 2
.inLeft:
        cmp ax, 302
        jle .inRight
        mov ax, 302
.inRight:
        mov [shipX], ax
        mov ax, [shipY]
        cmp byte [keys + 48h], 0
        je .notUp
        sub ax, 2
.notUp: cmp byte [keys + 50h], 0
        je .notDown
        add ax, 2
.notDown:
        cmp ax, 60
        jge .inTop
        mov ax, 60
.inTop: cmp ax, 182
        jle .inBottom
        mov ax, 182
.inBottom:
        mov [shipY], ax
        cmp byte [shield], 0
        je .noShield
        dec byte [shield]
.noShield:
        cmp byte [reload], 0
        je .loaded
        dec byte [reload]
        ret
.loaded:
        cmp byte [keys + 39h], 0        ; space
        je .done
        mov di, shots
        mov cx, SHOTS
.free:  cmp word [di + 6], 0
        je .fire
        add di, ENTITY
        loop .free
        ret
.fire:  mov ax, [shipX]
        add ax, 6
        shl ax, 4
        mov [di], ax
        mov ax, [shipY]
        sub ax, 6
        shl ax, 4
        mov [di + 2], ax
        mov word [di + 4], -80
        mov word [di + 6], 1
        mov byte [reload], 9
        mov bx, 700
        mov al, 2
        call tone
.done:  ret

moveShots:
        mov di, shots
        mov cx, SHOTS + PUFFS           ; puffs stand behind the shots and fade
.next:  cmp word [di + 6], 0
        je .skip
        mov ax, [di + 4]
        add [di + 2], ax
        cmp cx, PUFFS
        ja .shot
        dec word [di + 6]
        jmp .skip
.shot:  cmp word [di + 2], -64
        jg .skip
        mov word [di + 6], 0
.skip:  add di, ENTITY
        loop .next
        ret

moveRocks:
        mov di, rocks
        mov cx, ROCKS
.next:  push cx
        cmp word [di + 6], 0
        jne .moves
        ; A new one comes now and then.
        mov cx, 40
        call randomBelow
        or ax, ax
        jnz .skip
        mov cx, 300 * 16
        call randomBelow
        mov [di], ax
        mov word [di + 2], -16 * 16
        mov cx, 16
        call randomBelow
        mov bx, [level]
        shl bx, 2
        add ax, bx
%ifdef TWO
        add ax, 18
%else
        add ax, 10
%endif
        mov [di + 4], ax
        mov cx, 2
        call randomBelow
        inc ax
        mov [di + 6], ax
.moves: mov ax, [di + 4]
        add [di + 2], ax
        cmp word [di + 2], 204 * 16
        jl .inView
        mov word [di + 6], 0
        jmp .skip
.inView:
        ; Against the shots.
        mov si, shots
        mov cx, SHOTS
.shot:  cmp word [si + 6], 0
        je .nextShot
        mov ax, [si]
        sub ax, [di]
        add ax, 3 * 16
        cmp ax, 18 * 16
        ja .nextShot
        mov ax, [si + 2]
        sub ax, [di + 2]
        add ax, 4 * 16
        cmp ax, 18 * 16
        ja .nextShot
        mov word [si + 6], 0
        call burst
        add word [score], 10
        inc word [hits]
        cmp word [hits], 15
        jb .skip
        mov word [hits], 0
        inc word [level]
        cmp word [level], 12
        jbe .skip
        mov word [level], 12
        jmp .skip
.nextShot:
        add si, ENTITY
        loop .shot
        ; Against the ship.
        cmp byte [shield], 0
        jne .skip
        call nearShip
        jnc .skip
        call burst
        dec byte [lives]
        mov byte [shield], 120
        mov bx, 9000
        mov al, 30
        call tone
.skip:  pop cx
        add di, ENTITY
        dec cx
        jnz .next
        ret

; Carry set when the entity at di touches the ship.
nearShip:
        mov ax, [di]
        sar ax, 4
        sub ax, [shipX]
        add ax, 11
        cmp ax, 22
        ja .far
        mov ax, [di + 2]
        sar ax, 4
        sub ax, [shipY]
        add ax, 11
        cmp ax, 22
        ja .far
        stc
        ret
.far:   clc
        ret

; The entity at di goes up in a puff.
burst:
        mov word [di + 6], 0
        push si
        push cx
        mov si, puffs
        mov cx, PUFFS - 1
.free:  cmp word [si + 6], 0
        je .put
        add si, ENTITY
        loop .free
.put:   mov ax, [di]
        mov [si], ax
        mov ax, [di + 2]
        mov [si + 2], ax
        mov ax, [di + 4]
        sar ax, 1
        mov [si + 4], ax
        mov word [si + 6], 18
        mov bx, 4000
        mov al, 5
        call tone
        pop cx
        pop si
        ret

; One bag of mail at a time.
moveMail:
        mov di, mail
        cmp word [di + 6], 0
        jne .moves
        mov cx, 200
        call randomBelow
        or ax, ax
        jnz .done
        mov cx, 300 * 16
        call randomBelow
        mov [di], ax
        mov word [di + 2], -16 * 16
        mov word [di + 4], 22
        mov word [di + 6], 1
.moves: mov ax, [di + 4]
        add [di + 2], ax
        call nearShip
        jnc .missed
        mov word [di + 6], 0
        add word [score], 50
        mov bx, 900
        mov al, 8
        call tone
        ret
.missed:
        cmp word [di + 2], 204 * 16
        jl .done
        mov word [di + 6], 0
.done:  ret

; Plays by itself: lines up with the mail, else with the nearest rock, shoots, and gives way to what comes close.
steer:
        push cs
        pop es
        mov dword [keys + 48h], 0
        mov word [keys + 4Bh], 0
        mov byte [keys + 4Dh], 0
        mov byte [keys + 39h], 80h
        mov si, mail
        cmp word [si + 6], 0
        jne .chosen
        mov ax, -1000
        mov di, rocks
        mov cx, ROCKS
.rock:  cmp word [di + 6], 0
        je .next
        cmp [di + 2], ax
        jl .next
        cmp word [di + 2], 150 * 16
        jg .next
        mov ax, [di + 2]
        mov si, di
.next:  add di, ENTITY
        loop .rock
.chosen:
        mov ax, [si]
        sar ax, 4
        sub ax, [shipX]
        cmp ax, -3
        jge .notLeft
        mov byte [keys + 4Bh], 80h
        ret
.notLeft:
        cmp ax, 3
        jle .done
        mov byte [keys + 4Dh], 80h
.done:  ret

; --- Drawing ---------------------------------------------------------------------------------------------------------

; 64 colours from the top of the sky to the bottom.
skyPalette:
        mov dx, 3C8h
        mov al, SKY
        out dx, al
        inc dx
        xor cx, cx
.next:
%ifdef TWO
        mov ax, cx                      ; green dusk
        shr ax, 3
        out dx, al
        mov ax, cx
        shr ax, 1
        add al, 2
        out dx, al
        mov ax, cx
        shr ax, 2
        add al, 10
        out dx, al
%else
        mov ax, cx                      ; violet dusk
        shr ax, 1
        out dx, al
        mov ax, cx
        shr ax, 3
        out dx, al
        mov ax, cx
        shr ax, 1
        add al, 8
        out dx, al
%endif
        inc cx
        cmp cx, 64
        jb .next
        ret

; Paints the sky once: a dithered gradient and a planet that rises at the bottom.
paintSky:
        push es
        mov es, [sky]
        xor di, di
        xor dx, dx                      ; row
.row:   xor cx, cx
.pixel: ; shade = (row * 76 / 256 + dither) with 4 levels of dither
        mov ax, dx
        imul ax, 76
        mov bx, cx
        xor bx, dx
        and bx, 1
        shl bx, 7
        mov bp, dx
        and bp, 1
        shl bp, 6
        add bx, bp
        add ax, bx
        shr ax, 8
        mov bl, al
        ; The planet: a circle around (240, 250) with radius 130, lit from the left. The sum wraps at 65536, which paints
        ; the ring of a second, larger world at the upper left.
        push dx
        mov ax, cx
        sub ax, 240
        imul ax, ax
        mov bp, dx
        sub bp, 250
        imul bp, bp
        add ax, bp
        pop dx
        cmp ax, 130 * 130
        ja .outside
        shr ax, 9                       ; 0 in the middle to 33 at the rim
        mov bp, cx
        shr bp, 4
        add ax, bp
        neg ax
        add ax, 62
        jns .shade
        xor ax, ax
.shade: mov bl, al
.outside:
        mov al, bl
        add al, SKY
        stosb
        inc cx
        cmp cx, 320
        jb .pixel
        inc dx
        cmp dx, 200
        jb .row
        pop es
        ret

drawSky:
        push ds
        push es
        mov es, [buffer]
        mov ds, [sky]
        xor si, si
        xor di, di
        mov cx, 16000
        rep movsd
        pop es
        pop ds
        ; Stars in three depths.
        push es
        mov es, [buffer]
        mov si, stars
        mov cx, STARS
.star:  mov ax, [si + 4]
        shl ax, 2
        add [si + 2], ax
        cmp word [si + 2], 200 * 16
        jb .inView
        sub word [si + 2], 200 * 16
.inView:
        mov di, [si + 2]
        shr di, 4
        imul di, 320
        add di, [si]
        mov ax, [si + 4]
        add al, 11                      ; the nearer, the brighter
        mov [es:di], al
        add si, 6
        loop .star
        pop es
        ret

drawAll:
        mov di, mail
        cmp word [di + 6], 0
        je .noMail
        mov si, mailSprite
        call drawEntity
.noMail:
        mov di, rocks
        mov cx, ROCKS
.rock:  mov si, rock1
        cmp word [di + 6], 0
        je .nextRock
        cmp word [di + 6], 1
        je .small
        mov si, rock2
.small: call drawEntity
.nextRock:
        add di, ENTITY
        loop .rock
        mov di, shots
        mov cx, SHOTS
.shot:  cmp word [di + 6], 0
        je .nextShot
        mov si, shotSprite
        call drawEntity
.nextShot:
        add di, ENTITY
        loop .shot
        mov di, puffs
        mov cx, PUFFS
.puff:  cmp word [di + 6], 0
        je .nextPuff
        mov si, puff1
        cmp word [di + 6], 12
        ja .drawPuff
        mov si, puff2
        cmp word [di + 6], 6
        ja .drawPuff
        mov si, puff3
.drawPuff:
        call drawEntity
.nextPuff:
        add di, ENTITY
        loop .puff
        ; The ship blinks while it cannot be hit; its flame flickers.
        test byte [shield], 4
        jnz .done
        mov ax, [shipX]
        mov bx, [shipY]
        mov si, shipSprite
        call drawSprite
        mov si, flame1
        test byte [frames], 4
        jz .flame
        mov si, flame2
.flame: add bx, 14
        call drawSprite
.done:  ret

; Draws sprite si for the entity at di.
drawEntity:
        mov ax, [di]
        sar ax, 4
        mov bx, [di + 2]
        sar bx, 4

; Draws the 16 by 16 sprite at si to x ax, y bx, clipped. A blank is transparent, 1 to 9 and J to O choose a colour.
drawSprite:
        pusha
        push es
        mov es, [buffer]
        mov dx, 16
.row:   cmp bx, 200
        jae .nextRow                    ; above the screen, too, being unsigned
        mov di, bx
        imul di, 320
        mov cx, 16
        mov bp, ax
.pixel: push ax
        lodsb
        and al, 15
        jz .nextPixel
        cmp bp, 320
        jae .nextPixel
        push di
        add di, bp
        mov [es:di], al
        pop di
.nextPixel:
        pop ax
        inc bp
        loop .pixel
        inc bx
        dec dx
        jnz .row
        jmp .done
.nextRow:
        add si, 16
        inc bx
        dec dx
        jnz .row
.done:  pop es
        popa
        ret

; Shows the buffer.
present:
        push ds
        push es
        push 0A000h
        pop es
        mov ds, [buffer]
        mov si, 320 * 9                 ; the first rows belong to the status line
        mov di, si
        mov cx, 16000 - 80 * 9
        rep movsd
        pop es
        pop ds
        ret

showStatus:
        mov ax, [score]
        shl ax, 3
        add al, [lives]
        cmp ax, [shown]
        je .done
        mov [shown], ax
        mov dx, 0001h
        mov bl, 7
        mov si, scoreText
        call putText
        mov bl, 15
        mov ax, [score]
        call putNumber
        mov dx, 000Fh
        mov bl, 7
        mov si, bestText
        call putText
        mov bl, 15
        mov ax, [best]
        call putNumber
        mov dx, 001Bh
        mov bl, 7
        mov si, shipsText
        call putText
        mov al, [lives]
        add al, '0'
        mov [livesText], al
        mov bl, 15
        mov si, livesText
        call putText
.done:  ret

titleText   db TITLE, '$'
taglineText db TAGLINE, '$'
help1       db ' Arrows fly  Space shoots  Esc ends ', '$'
help2       db ' Rocks 10   Mail bags 50 ', '$'
pressText   db ' Press a key ', '$'
overText    db ' RETURN TO SENDER ', '$'
againText   db ' Enter: another round   Esc: enough ', '$'
scoreText   db 'SCORE ', '$'
bestText    db 'BEST ', '$'
shipsText   db 'SHIPS ', '$'
livesText   db '3', '$'
shown       dw -1

palette db 14,10,10,  26,20,18,  38,31,26,  50,44,38        ; 1-4 rock
        db 8,14,34,  16,28,52,  34,48,62                    ; 5-7 hull
        db 60,20,8,  63,44,10                               ; 8-9 fire
        db 40,28,16                                         ; 10 J leather
        db 52,40,24                                         ; 11 K
        db 24,24,34,  40,40,52,  60,60,63                   ; 12-14 L M N star
        db 63,63,63                                         ; 15 O white

shipSprite:
        db '       77       '
        db '       77       '
        db '      7667      '
        db '      7667      '
        db '     76OO67     '
        db '     76NN67     '
        db '     76LL67     '
        db '    7666666 7   '
        db '    76666667    '
        db '   776666667 7  '
        db '  77666666667 7 '
        db ' 7766566665667  '
        db '7766556666556677'
        db '7655  6666  5567'
        db '75    5665    57'
        db '8      55      8'
flame1:
        db '                '
        db '      9889      '
        db '      8998      '
        db '       99       '
        times 12 db '                '
flame2:
        db '                '
        db '      8998      '
        db '       88       '
        db '                '
        times 12 db '                '
rock1:
        db '                '
        db '     3444       '
        db '   33344433     '
        db '  3334443332    '
        db '  33333332222   '
        db ' 3343332233222  '
        db ' 3443322233221  '
        db ' 33333333322211 '
        db ' 23333223332211 '
        db ' 23322222332111 '
        db ' 22322223322111 '
        db '  2222333221111 '
        db '  1222222211111 '
        db '   11222111111  '
        db '     11111111   '
        db '                '
rock2:
        db '   344433       '
        db '  3444443333    '
        db ' 344433333332   '
        db ' 44333222333322 '
        db '343332112233322 '
        db '3333321 12333221'
        db '33333221223332 1'
        db '3334333333322221'
        db '2344433333222221'
        db '2334333222223211'
        db '2233332112222111'
        db ' 223332112221111'
        db ' 12233322221111 '
        db '  1222222211111 '
        db '   1112221111   '
        db '      111111    '
mailSprite:
        db '                '
        db '      KKKK      '
        db '     KJ  JK     '
        db '     KJ  JK     '
        db '   KKKKKKKKKK   '
        db '  KKJJJJJJJJKK  '
        db '  KJJOOOOOOJJJ  '
        db '  KJJO8OO8OJJJ  '
        db '  KJJOO88OOJJJ  '
        db '  KJJOOOOOOJJJ  '
        db '  KKJJJJJJJJJJ  '
        db '  JKKJJJJJJJJ1  '
        db '   JJJJJJJJJ1   '
        db '                '
        times 2 db '                '
shotSprite:
        db ' 99             '
        db ' OO             '
        db ' OO             '
        db ' 99             '
        db ' 88             '
        times 11 db '                '
puff1:
        db '                '
        db '                '
        db '      9  9      '
        db '    9 9OO9      '
        db '     9OOOO9 9   '
        db '    9OOOOOO9    '
        db '   99OOOOOO99   '
        db '    OOOOOOOO    '
        db '    OOOOOOOO9   '
        db '   99OOOOOO9    '
        db '    9OOOOOO9    '
        db '   9 9OOOO9     '
        db '      9OO9 9    '
        db '     9  9       '
        times 2 db '                '
puff2:
        db '      8         '
        db '  8   99  8     '
        db '   99 99 9  8   '
        db '   9 9OO99 9    '
        db '    9O99O9 9    '
        db ' 899O9  9O99 8  '
        db '  9O9    9O99   '
        db '  99      9O9   '
        db '  9O9     99 8  '
        db ' 89O9    9O9    '
        db '   9O9  9O99    '
        db '    9O99O9  9   '
        db '  9  9OO9 99 8  '
        db ' 8  99 99       '
        db '    8   8 8     '
        db '                '
puff3:
        db '   8    8    8  '
        db '                '
        db ' 8    8    9    '
        db '    9        8  '
        db '  8        8    '
        db '                '
        db '8   8         8 '
        db '                '
        db '   9        9   '
        db ' 8            8 '
        db '                '
        db '    8     8     '
        db ' 8      9    8  '
        db '   8            '
        db '        8   8   '
        db '   8            '

        section .bss
buffer  resw 1
sky     resw 1
oldKeyboard resw 2
keys    resb 128
pressed resb 1
lives   resb 1
shield  resb 1
reload  resb 1
hits    resw 1
shipX   resw 1
shipY   resw 1
stars   resw STARS * 3
rocks   resb ROCKS * ENTITY
shots   resb SHOTS * ENTITY
puffs   resb PUFFS * ENTITY
mail    resb ENTITY
