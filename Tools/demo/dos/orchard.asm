; Orchard Breaker: a ball, a basket and six rows of fruit. Mode 13h.

%include "common.inc"

FRUIT_COLUMNS equ 16
FRUIT_ROWS    equ 6
FRUIT_WIDTH   equ 19
FRUIT_HEIGHT  equ 10
FRUIT_LEFT    equ 8
FRUIT_TOP     equ 28
BASKET_Y      equ 186
BASKET_WIDTH  equ 44

start:
        call readSwitches
        call readBest
        mov ax, 13h
        int 10h
        push 0A000h
        pop es
        mov si, palette
        mov al, 16
        mov cx, 32
        call setPalette
        call paintBackground
        cmp byte [selfPlay], PLAY
        jne newGame
title:
        mov bl, 47
        mov dh, 6
        mov si, titleText
        call putCentred
        mov bl, 44
        mov dh, 9
        mov si, taglineText
        call putCentred
        mov bl, 43
        mov dh, 13
        mov si, help1
        call putCentred
        mov dh, 15
        mov si, help2
        call putCentred
        mov bl, 47
        mov dh, 19
        mov si, pressText
        call putCentred
        call waitKey
        cmp al, 27
        je quit

newGame:
        mov word [score], 0
        mov word [level], 1
        mov byte [balls], 3
        mov word [frames], 0
        mov word [basketX], 138
newOrchard:
        call paintBackground
        mov di, fruit
        mov cx, FRUIT_COLUMNS * FRUIT_ROWS
        mov byte [left], FRUIT_COLUMNS * FRUIT_ROWS
        mov al, 1
        push es
        push cs
        pop es
        rep stosb
        pop es
        call paintFruit
        call showStatus
serve:
        mov word [ballX], 160 * 16
        mov word [ballY], 150 * 16
        mov ax, [level]
        shl ax, 2
        add ax, 36
        mov [speedY], ax
        neg word [speedY]
        mov cx, 30
        call randomBelow
        sub ax, 15
        mov [speedX], ax

frame:
        inc word [frames]
        call eraseBall
        call moveBasket
        call moveBall
        call drawBall
        call drawBasket
        call waitFrame
        call soundTick
        cmp byte [selfPlay], PLAY
        je .keys
        call selfPlayOver
        jae quit
.keys:  cmp byte [left], 0
        je .nextOrchard
        cmp word [ballY], 197 * 16
        jl frame
        ; Missed.
        call eraseBall
        dec byte [balls]
        call showStatus
        mov bx, 12000
        mov al, 25
        call tone
        cmp byte [balls], 0
        jne serve
        cmp byte [selfPlay], PLAY
        jne quit
        mov ax, [score]
        cmp ax, [best]
        jbe .noBest
        mov [best], ax
.noBest:
        call silence
        mov bl, 47
        mov dh, 14
        mov si, overText
        call putCentred
        mov dh, 16
        mov bl, 43
        mov si, againText
        call putCentred
.key:   call waitKey
        cmp al, 27
        je quit
        cmp al, 13
        jne .key
        jmp newGame
.nextOrchard:
        inc word [level]
        add word [score], 100
        jmp newOrchard

; The arrow keys give the basket a push; by itself it follows the ball.
moveBasket:
        mov ax, [basketX]
        mov [oldBasketX], ax
        cmp byte [selfPlay], PLAY
        je .hand
        mov ax, [ballX]
        sar ax, 4
        mov bx, [frames]                ; aims off the middle, now left, now right
        shr bx, 5
        and bx, 31
        add ax, bx
        sub ax, BASKET_WIDTH / 2 + 16
        mov [basketX], ax
        jmp .clip
.hand:  call pollKey
        jz .drift
        cmp al, 27
        je quit
        cmp ah, 4Bh
        jne .notLeft
        mov word [push_], -7
.notLeft:
        cmp ah, 4Dh
        jne .drift
        mov word [push_], 7
.drift: mov ax, [push_]
        add [basketX], ax
        cmp word [push_], 0
        je .clip
        jl .left
        test byte [frames], 1
        jz .clip
        dec word [push_]
        jmp .clip
.left:  test byte [frames], 1
        jz .clip
        inc word [push_]
.clip:  mov ax, [basketX]
        cmp ax, 4
        jge .in1
        mov ax, 4
.in1:   cmp ax, 316 - BASKET_WIDTH
        jle .in2
        mov ax, 316 - BASKET_WIDTH
.in2:   mov [basketX], ax
        ret

moveBall:
        mov ax, [speedX]
        add [ballX], ax
        mov ax, [speedY]
        add [ballY], ax
        cmp word [ballX], 4 * 16
        jge .notLeft
        mov word [ballX], 4 * 16
        neg word [speedX]
        call wallSound
.notLeft:
        cmp word [ballX], 311 * 16
        jle .notRight
        mov word [ballX], 311 * 16
        neg word [speedX]
        call wallSound
.notRight:
        cmp word [ballY], 14 * 16
        jge .notTop
        mov word [ballY], 14 * 16
        neg word [speedY]
        call wallSound
.notTop:
        ; The basket: where the ball meets it sets the way it leaves.
        cmp word [speedY], 0
        jl .fruit
        mov ax, [ballY]
        sar ax, 4
        cmp ax, BASKET_Y - 5
        jl .fruit
        cmp ax, BASKET_Y + 4
        jg .fruit
        mov bx, [ballX]
        sar bx, 4
        add bx, 2
        sub bx, [basketX]
        cmp bx, -4
        jl .fruit
        cmp bx, BASKET_WIDTH + 4
        jg .fruit
        sub bx, BASKET_WIDTH / 2
        add bx, bx
        mov [speedX], bx
        neg word [speedY]
        mov bx, 1400
        mov al, 3
        call tone
.fruit: ; The fruit under the middle of the ball.
        mov ax, [ballY]
        sar ax, 4
        sub ax, FRUIT_TOP - 2
        js .done
        xor dx, dx
        mov bx, FRUIT_HEIGHT
        div bx
        cmp ax, FRUIT_ROWS
        jae .done
        mov cx, ax                      ; row
        mov ax, [ballX]
        sar ax, 4
        sub ax, FRUIT_LEFT - 2
        js .done
        xor dx, dx
        mov bx, FRUIT_WIDTH
        div bx
        cmp ax, FRUIT_COLUMNS
        jae .done
        mov bx, cx
        shl bx, 4
        add bx, ax
        cmp byte [fruit + bx], 0
        je .done
        mov byte [fruit + bx], 0
        dec byte [left]
        neg word [speedY]
        mov dx, FRUIT_ROWS              ; the higher, the sweeter
        sub dx, cx
        add dx, dx
        add [score], dx
        push ax
        mov bx, cx
        imul bx, 90
        add bx, 500
        mov al, 3
        call tone
        pop ax
        ; ax = column, cx = row: pick it.
        imul ax, FRUIT_WIDTH
        add ax, FRUIT_LEFT
        imul cx, FRUIT_HEIGHT
        add cx, FRUIT_TOP
        mov dx, FRUIT_WIDTH
        mov bx, FRUIT_HEIGHT
        call restore
        call showScore
.done:  ret

wallSound:
        mov bx, 2400
        mov al, 2
        jmp tone

; --- Drawing, straight into video memory (es) --------------------------------------------------------------------------

; Colour of the background at column ax, row cx: the evening sky over the hills.
background:
        push bx
        push dx
        mov bx, cx
        shr bx, 4                       ; a band every 16 rows
        mov dx, ax
        xor dx, cx
        test dl, 1
        jz .plain
        test cl, 8
        jz .plain
        inc bx
.plain: add bl, 16                      ; 13 colours of sky
        ; Hills: two slopes of a triangle wave.
        mov dx, ax
        and dx, 127
        cmp dx, 64
        jb .up
        xor dx, 127
.up:    shr dx, 1
        neg dx
        add dx, 178
        cmp cx, dx
        jb .sky
        mov bl, 29
        mov dx, ax
        add dx, 40
        and dx, 63
        cmp dx, 32
        jb .up2
        xor dx, 63
.up2:   shr dx, 1
        neg dx
        add dx, 188
        cmp cx, dx
        jb .sky
        mov bl, 30
.sky:   mov [shade], bl
        pop dx
        pop bx
        ret

paintBackground:
        xor ax, ax
        mov cx, 10
        mov dx, 320
        mov bx, 190

; Paints the background over the rectangle ax, cx of size dx, bx.
restore:
        pusha
        mov di, cx
        imul di, 320
        add di, ax
        mov bp, dx
.row:   mov dx, bp
        push ax
        push di
.pixel: call background
        push ax
        mov al, [shade]
        stosb
        pop ax
        inc ax
        dec dx
        jnz .pixel
        pop di
        pop ax
        add di, 320
        inc cx
        dec bx
        jnz .row
        popa
        ret

paintFruit:
        xor bx, bx
.next:  call drawFruit
        inc bx
        cmp bx, FRUIT_COLUMNS * FRUIT_ROWS
        jb .next
        mov si, fruitPalette
        mov al, 52
        mov cx, 18
        jmp setPalette

; Draws fruit bx, in the three shades of its row.
drawFruit:
        push bx
        mov cx, bx
        shr cx, 4
        mov dx, bx
        and dx, 15
        mov ax, cx
        imul ax, FRUIT_HEIGHT
        add ax, FRUIT_TOP
        imul di, ax, 320
        imul dx, FRUIT_WIDTH
        add di, dx
        add di, FRUIT_LEFT
        mov al, cl
        mov ah, 3
        mul ah
        add al, 52
        mov bp, FRUIT_HEIGHT - 1
        mov si, fruitShape
.line:  mov cx, FRUIT_WIDTH
.pixel: mov ah, [si]
        inc si
        and ah, 3
        jz .clear
        add ah, al
        dec ah
        mov [es:di], ah
.clear: inc di
        loop .pixel
        add di, 320 - FRUIT_WIDTH
        dec bp
        jnz .line
        pop bx
        ret

eraseBall:
        mov ax, [ballX]
        sar ax, 4
        mov cx, [ballY]
        sar cx, 4
        mov dx, 5
        mov bx, 5
        call restore
        ; A fruit that the ball rolled over is drawn again.
        cmp cx, FRUIT_TOP + FRUIT_ROWS * FRUIT_HEIGHT
        jge .done
        call paintRemaining
.done:  ret

; Draws again the fruit that is left. Fast enough for the few frames in which the ball is among it.
paintRemaining:
        xor bx, bx
.next:  cmp byte [fruit + bx], 0
        je .skip
        call nearBall
        jc .skip
        call drawFruit
.skip:  inc bx
        cmp bx, FRUIT_COLUMNS * FRUIT_ROWS
        jb .next
        ret

; Carry set when fruit bx lies far from the ball.
nearBall:
        mov ax, bx
        shr ax, 4
        imul ax, FRUIT_HEIGHT
        add ax, FRUIT_TOP
        mov dx, [ballY]
        sar dx, 4
        sub ax, dx
        add ax, 16
        cmp ax, 32
        ja .far
        mov ax, bx
        and ax, 15
        imul ax, FRUIT_WIDTH
        add ax, FRUIT_LEFT
        mov dx, [ballX]
        sar dx, 4
        sub ax, dx
        add ax, 24
        cmp ax, 48
        ja .far
        clc
        ret
.far:   stc
        ret

drawBall:
        mov ax, [ballY]
        sar ax, 4
        imul di, ax, 320
        mov ax, [ballX]
        sar ax, 4
        add di, ax
        mov si, ballShape
        mov bp, 5
.line:  mov cx, 5
.pixel: lodsb
        and al, 3
        jz .clear
        add al, 43
        mov [es:di], al
.clear: inc di
        loop .pixel
        add di, 320 - 5
        dec bp
        jnz .line
        ret

drawBasket:
        mov ax, [oldBasketX]
        cmp ax, [basketX]
        je .same
        mov cx, BASKET_Y
        mov dx, BASKET_WIDTH
        mov bx, 8
        call restore
.same:  imul di, word [basketRow], 320
        add di, [basketX]
        xor dx, dx
.line:  mov cx, BASKET_WIDTH
        mov bx, dx                      ; the sides slope in
        sub cx, bx
        sub cx, bx
        push di
        add di, bx
.pixel: mov ax, cx
        xor ax, dx
        shr ax, 1
        and ax, 1
        add al, 40
        or dx, dx
        jnz .weave
        mov al, 43
.weave: stosb
        loop .pixel
        pop di
        add di, 320
        inc dx
        cmp dx, 8
        jb .line
        ret

showStatus:
        push es
        push cs
        pop es
        mov dx, 000Fh
        mov bl, 43
        mov si, bestText
        call putText
        mov bl, 47
        mov ax, [best]
        call putNumber
        mov dx, 001Bh
        mov bl, 43
        mov si, ballsText
        call putText
        mov al, [balls]
        add al, '0'
        mov [ballsDigit], al
        mov bl, 47
        mov si, ballsDigit
        call putText
        pop es
showScore:
        mov dx, 0001h
        mov bl, 43
        mov si, scoreText
        call putText
        mov bl, 47
        mov ax, [score]
        jmp putNumber

titleText   db ' ORCHARD BREAKER ', '$'
taglineText db ' Shake every tree before dusk ', '$'
help1       db ' Left and right push the basket ', '$'
help2       db ' The higher fruit is the sweeter ', '$'
pressText   db ' Press a key ', '$'
overText    db ' THE BIRDS GET THE REST ', '$'
againText   db ' Enter: again   Esc: enough ', '$'
scoreText   db 'SCORE ', '$'
bestText    db 'BEST ', '$'
ballsText   db 'BALLS ', '$'
ballsDigit  db '3', '$'
basketRow   dw BASKET_Y
push_       dw 0

palette db 8,8,26, 12,9,30, 17,11,34, 23,13,37, 29,15,38, 35,18,38, 41,21,36, 47,25,33, 52,30,30, 56,36,28
        db 59,42,28, 61,48,30, 62,53,34, 12,26,20, 7,17,13, 4,10,8, 0,0,0, 0,0,0    ; sky, hills
        db 0,0,0, 0,0,0, 0,0,0, 0,0,0, 0,0,0, 0,0,0                                 ; not used
        db 34,20,8, 46,30,14, 20,12,6, 58,46,28                                     ; basket
        db 40,44,60, 52,54,63, 60,60,63, 63,63,63                                   ; ball
fruitPalette:
        db 63,40,36, 56,10,14, 34,4,10          ; apple
        db 63,54,34, 60,36,6, 38,20,4           ; orange
        db 63,62,40, 58,54,10, 38,34,4          ; lemon
        db 50,62,38, 26,50,14, 12,30,8          ; pear
        db 46,48,63, 24,24,56, 12,12,34         ; plum
        db 60,46,63, 42,20,52, 24,8,32          ; fig

fruitShape:     ; 1 light, 2 full, 3 dark
        db '       333         '
        db '    1112222222     '
        db '  1111222222222 3  '
        db '  1112222222222233 '
        db '  1122222222222233 '
        db '  1222222222222233 '
        db '   222222222222333 '
        db '    2222222223333  '
        db '      333333333    '
ballShape:
        db ' 333 '
        db '33332'
        db '33322'
        db '33221'
        db ' 221 '

        section .bss
fruit   resb FRUIT_COLUMNS * FRUIT_ROWS
left    resb 1
balls   resb 1
shade   resb 1
ballX   resw 1
ballY   resw 1
speedX  resw 1
speedY  resw 1
basketX resw 1
oldBasketX resw 1
