# A link to the header of a class, which a forge shows, becomes a link to the class.
s#\[(T[A-Za-z]+)\]\(\.\./\.\./include/[^)]*\)#Quor::\1#g
