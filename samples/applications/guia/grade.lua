-- Draws the programmes of the evening; the cursor keys mark one of them.
local programas = { "Jornal da Maré", "Notícias do Porto", "Cinema na Rede" }
local marcado = 1

local function desenhar()
  local largura, altura = canvas:attrSize()
  canvas:attrColor(0, 0, 0, 0)
  canvas:clear()
  canvas:attrFont("vera", math.floor(altura / 5), "bold")
  for i, nome in ipairs(programas) do
    canvas:attrColor(i == marcado and "yellow" or "white")
    canvas:drawText(largura * 0.05, (i - 1) * altura / 3, nome)
  end
  canvas:flush()
end

local PASSOS = { CURSOR_UP = -1, CURSOR_DOWN = 1 }

event.register(function(evt)
  local passo = evt.class == "key" and evt.type == "press" and PASSOS[evt.key]
  if passo then
    marcado = (marcado - 1 + passo) % #programas + 1
  end
  if passo or evt.class == "ncl" and evt.action == "start" then
    desenhar()
  end
end)
